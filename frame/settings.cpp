#include "frame/settings.h"

#include "frame/ports.h"

namespace dorvo::frame {

Settings& basMain() {
  static Settings settings;
  return settings;
}

bool OpenRecordset(std::shared_ptr<data::Recordset>& recordset, std::string_view query, data::CursorType cursor,
                   data::LockType lock) {
  if (!recordset) {
    recordset = std::make_shared<data::Recordset>();
    recordset->CursorLocation(data::CursorLocation::Client);
  } else if (recordset->State() == data::State::Open) {
    recordset->Close();
    ports().yield();
  }
  recordset->Open(query, basMain().myConn, cursor, lock, data::CommandType::Text);
  recordset->Properties("Update Criteria", 1);
  recordset->Properties("Update Resync", 15);
  return true;
}

bool CloseRecordset(std::shared_ptr<data::Recordset>& recordset) {
  if (recordset && recordset->State() == data::State::Open) recordset->Close();
  recordset.reset();
  return true;
}

bool BrowseForFolder(const std::string& title, std::string& folder) {
  basMain().InitialFolder = folder;
  std::string chosen;
  if (ports().browse_folder(title, basMain().InitialFolder, chosen)) folder = chosen;
  return true;
}

}  // namespace dorvo::frame
