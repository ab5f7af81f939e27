// Entries of the shared library that are not automation classes: what a host needs around them.
//
// Plain C functions, one thread. Texts are UTF-8. A call that fails returns a negative code and leaves one line for
// DorvoLastError(). The four functions of an automation server stand here too.
#pragma once

#include "automation/com.h"

#define DORVO_ENTRY extern "C" __attribute__((visibility("default")))

// ---- the automation server ----

DORVO_ENTRY dorvo::automation::HRESULT DllGetClassObject(const dorvo::automation::CLSID& clsid,
                                                         const dorvo::automation::IID& iid, void** object);
DORVO_ENTRY dorvo::automation::HRESULT DllCanUnloadNow();
// Writes and removes the user's registration: XDG_DATA_HOME/dorvoform/classes, or ~/.local/share/dorvoform/classes.
DORVO_ENTRY dorvo::automation::HRESULT DllRegisterServer();
DORVO_ENTRY dorvo::automation::HRESULT DllUnregisterServer();

// ---- objects ----

// "DorvoFormDLL.clsForm1", in any capitals. CO_E_CLASSSTRING when there is none.
DORVO_ENTRY dorvo::automation::HRESULT DorvoClassID(const char* program_id, dorvo::automation::CLSID* clsid);

// Opens a database for `generalPrintClass.myConn`; read-only.
DORVO_ENTRY dorvo::automation::HRESULT DorvoOpenConnection(const char* connection_text,
                                                           dorvo::automation::IDispatch** connection);

// A launcher for any report class by its name, with every option, key and data member: for checks and layout authors.
DORVO_ENTRY dorvo::automation::HRESULT DorvoCreateReport(const char* report, dorvo::automation::IDispatch** launcher);

// ---- printing without a window ----

// Stored layouts are read from FOLDER/NAME.xml from now on; null or empty: the built-in ones again. Reports that were
// created before keep theirs.
DORVO_ENTRY void DorvoLayoutsFrom(const char* folder);

// Every report that is shown from now on is written to this file too. Its kind is told by its extension, and
// E_INVALIDARG says that there is no such kind or that the file was named before.
DORVO_ENTRY dorvo::automation::HRESULT DorvoAddOutput(const char* file);

// A property of a format's filter for every file of that format: "PDF.Version=0". E_INVALIDARG for a name that is none
// and for a value of another type.
DORVO_ENTRY dorvo::automation::HRESULT DorvoOutputOption(const char* option);

// Ends a job: forgets files and options, and tells what became of it. When no report was shown, page dumps among the
// files are written with no pages; `opened` is the class or report that was meant, `failure` its message or null.
struct DorvoOutcome {
  std::uint64_t pages;
  std::int32_t failed;  // not 0: the run, or the writing of a file, ended with a failure
};
DORVO_ENTRY dorvo::automation::HRESULT DorvoEndJob(const char* opened, const char* failure, DorvoOutcome* outcome);

// ---- windows ----

// From now on a report that is shown opens a preview, and SHowForm returns while it is open. Loads libDorvoPreview.so,
// which stands beside this library. A host that has a QApplication keeps it, and its event loop drives the windows; for
// any other host one is made, and the host calls one of the next two. Done once; a second call does nothing. Fails
// where there is no such library or no screen.
DORVO_ENTRY dorvo::automation::HRESULT DorvoPreviewStart();
// Handles what the user does until the last preview is closed; returns at once when none is open.
DORVO_ENTRY dorvo::automation::HRESULT DorvoPreviewRun();
// Handles what has come in so far and returns, for a host that turns a loop of its own.
DORVO_ENTRY dorvo::automation::HRESULT DorvoPreviewTurn();
// Previews that are open.
DORVO_ENTRY std::int32_t DorvoPreviewCount();

// ---- lists and messages; a text is good until the function that gets it returns ----

using DorvoEachText = void (*)(void* context, const char* text);
// What the officer should know of the job that ended last, its failure included.
DORVO_ENTRY void DorvoEachMessage(DorvoEachText each, void* context);

struct DorvoMember {
  const char* class_name;
  const char* name;
  const char* type;  // Boolean, Long, String, Variant or Object
  std::int32_t id;
  std::int32_t is_method;
  std::int32_t is_readable;
  std::int32_t by_reference;
};
using DorvoEachMemberOf = void (*)(void* context, const DorvoMember* member);
// All members of all classes, or of the class of that name only.
DORVO_ENTRY void DorvoEachMember(const char* class_name, DorvoEachMemberOf each, void* context);

using DorvoEachReportOf = void (*)(void* context, const char* report, std::int32_t is_built);
DORVO_ENTRY void DorvoEachReport(DorvoEachReportOf each, void* context);

// The extensions of the files that DorvoAddOutput knows ("pdf"), and the options that DorvoOutputOption knows, with
// what each takes.
DORVO_ENTRY void DorvoEachOutputKind(DorvoEachText each, void* context);
DORVO_ENTRY void DorvoEachOutputOption(DorvoEachText each, void* context);

// One line on the call that failed last; never null.
DORVO_ENTRY const char* DorvoLastError();
DORVO_ENTRY const char* DorvoVersion();
