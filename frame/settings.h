// `basMain`: the shared settings of the process and the helpers that all reports share.
//
// They start at the zero value of their type and nothing resets them: a flag that one launcher sets stays set for the
// next report of any class until some launcher writes it again. Written through `generalPrintClass` and the launchers,
// only read by reports. One thread.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "data/connection.h"
#include "data/recordset.h"

namespace dorvo::frame {

struct Settings {
  std::string ConnectionString;              // of the main data control of every report
  std::shared_ptr<data::Connection> myConn;  // for secondary recordsets
  bool PrintQuality = false;                 // True: draft
  bool ShowPageSetup = false;
  bool BlankForm = false;
  bool preprinted = false;
  bool ShowFilingDate = false;
  bool ShowCity = false;
  bool onethirty = false;
  bool one = false;  // stored and never read
  bool ShowFooter = false;
  std::string UserName;
  std::string AppPath;
  std::string InitialFolder;  // on which the folder browser opens
};

Settings& basMain();

// Opens `query` on `myConn` into `recordset`, which is created when empty and closed first when open; the message loop
// then gets one turn. Fails as Recordset::Open does. Returns true.
bool OpenRecordset(std::shared_ptr<data::Recordset>& recordset, std::string_view query,
                   data::CursorType cursor = data::CursorType::Static, data::LockType lock = data::LockType::ReadOnly);

// Closes the recordset when it is open and empties the variable. Returns true.
bool CloseRecordset(std::shared_ptr<data::Recordset>& recordset);

// The folder browser, opened on `folder`. Overwrites it with the user's choice; Cancel leaves it alone. Returns true.
bool BrowseForFolder(const std::string& title, std::string& folder);

}  // namespace dorvo::frame
