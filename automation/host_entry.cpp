#include "automation/host_entry.h"

#include "automation/class_ids.h"
#include "automation/connection_object.h"
#include "automation/launcher_object.h"
#include "automation/library.h"
#include "automation/windows.h"
#include "engine/layout_store.h"
#include "frame/slots.h"

namespace dorvo::automation {
namespace {

std::string text_or_empty(const char* text) {
  return text ? text : "";
}

const char* type_name(frame::Argument argument) {
  switch (argument) {
    case frame::Argument::Boolean:
      return "Boolean";
    case frame::Argument::Long:
      return "Long";
    case frame::Argument::Text:
      return "String";
    case frame::Argument::Object:
      return "Object";
    case frame::Argument::VariantBoolean:
    case frame::Argument::VariantText:
    case frame::Argument::Variant:
      break;
  }
  return "Variant";
}

// What a class would open now, or the name itself when it is a report's or opens nothing.
std::string report_meant(const std::string& opened) {
  const frame::LauncherClass* row = frame::find_launcher_class(opened);
  if (!row || row->report.empty()) return opened;
  return std::string(row->opens());
}

DorvoMember described(const frame::LauncherClass& row, const frame::Member& member) {
  // Names are literals of the table, which end with a NUL.
  return {row.name.data(),
          member.name.data(),
          type_name(member.argument),
          member.id,
          member.is_method(),
          member.is_readable(),
          member.argument == frame::Argument::Object};
}

}  // namespace
}  // namespace dorvo::automation

using namespace dorvo;
using namespace dorvo::automation;

HRESULT DorvoClassID(const char* program_id, CLSID* clsid) {
  if (!clsid || !program_id) return E_POINTER;
  const frame::LauncherClass* row = class_of(std::string_view(program_id));
  *clsid = row ? class_id(*row) : GUID_NULL;
  return row ? S_OK : fail(CO_E_CLASSSTRING, "There is no class \"" + std::string(program_id) + "\"");
}

HRESULT DorvoOpenConnection(const char* connection_text, IDispatch** connection) {
  if (!connection) return E_POINTER;
  *connection = nullptr;
  return guarded(E_FAIL, [&] {
    start_library();
    *connection = new ConnectionObject(data::Connection::pooled(text_or_empty(connection_text)));
  });
}

HRESULT DorvoCreateReport(const char* report, IDispatch** launcher) {
  if (!launcher) return E_POINTER;
  *launcher = nullptr;
  return guarded(CLASS_E_CLASSNOTAVAILABLE, [&] {
    start_library();
    const std::string name = text_or_empty(report);
    const frame::ReportClass* row = frame::find_report_class(name);
    if (!row) throw value::Failure(value::Error::TypeMismatch, "There is no report class \"" + name + "\"");
    *launcher = new LauncherObject(frame::direct_launcher(row->name));
  });
}

void DorvoLayoutsFrom(const char* folder) {
  start_library();
  engine::layouts_from(text_or_empty(folder));
}

HRESULT DorvoAddOutput(const char* file) {
  return guarded(E_INVALIDARG, [&] { job().add_output(text_or_empty(file)); });
}

HRESULT DorvoOutputOption(const char* option) {
  return guarded(E_INVALIDARG, [&] { job().add_option(text_or_empty(option)); });
}

HRESULT DorvoEndJob(const char* opened, const char* failure, DorvoOutcome* outcome) {
  if (!outcome) return E_POINTER;
  const HRESULT code = guarded(E_FAIL, [&] {
    if (!job().has_shown()) job().show_nothing(report_meant(text_or_empty(opened)), text_or_empty(failure));
  });
  *outcome = {job().pages(), job().failed() || failed(code)};
  end_job();
  return code;
}

HRESULT DorvoPreviewStart() {
  return guarded(E_FAIL, [] { load_windows(); });
}

HRESULT DorvoPreviewRun() {
  return guarded(E_FAIL, [] {
    if (loaded_windows()) loaded_windows()->run();
  });
}

HRESULT DorvoPreviewTurn() {
  return guarded(E_FAIL, [] {
    if (loaded_windows()) loaded_windows()->turn();
  });
}

std::int32_t DorvoPreviewCount() {
  return loaded_windows() ? static_cast<std::int32_t>(loaded_windows()->open()) : 0;
}

void DorvoEachMessage(DorvoEachText each, void* context) {
  for (const std::string& line : last_messages()) each(context, line.c_str());
}

void DorvoEachMember(const char* class_name, DorvoEachMemberOf each, void* context) {
  for (const frame::LauncherClass& row : frame::launcher_classes()) {
    if (class_name && !value::same_name(row.name, class_name)) continue;
    for (const auto& group : row.members) {
      for (const frame::Member& member : group) {
        const DorvoMember told = described(row, member);
        each(context, &told);
      }
    }
  }
}

void DorvoEachReport(DorvoEachReportOf each, void* context) {
  start_library();
  for (const frame::ReportClass& row : frame::report_classes()) each(context, row.name.data(), row.is_built());
}

void DorvoEachOutputKind(DorvoEachText each, void* context) {
  for (const export_::FormatRow& row : export_::formats()) each(context, row.extensions.front().data());
}

void DorvoEachOutputOption(DorvoEachText each, void* context) {
  for (const std::string& line : export_::option_help()) each(context, line.c_str());
}

const char* DorvoLastError() {
  return last_error().c_str();
}

const char* DorvoVersion() {
  return DORVO_VERSION;
}
