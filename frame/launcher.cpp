#include "frame/launcher.h"

#include "frame/coerce.h"
#include "frame/slots.h"

namespace dorvo::frame {
namespace {

value::Variant converted(const Member& member, const value::Variant& value) {
  switch (member.argument) {
    case Argument::Boolean:
    case Argument::VariantBoolean:
      return member.effect == Effect::Exact ? exactly_true(value) : boolean_of(value);
    case Argument::Long:
      return long_of(value);
    case Argument::Text:
    case Argument::VariantText:
      return strict_text_of(value);
    case Argument::Variant:
      return value;
    case Argument::Object:
      break;
  }
  throw value::Failure(value::Error::TypeMismatch, std::string(member.name) + " takes an object");
}

}  // namespace

void Launcher::put(const Member& member, const value::Variant& given) {
  const value::Variant value = converted(member, given);
  switch (member.effect) {
    case Effect::Option:
    case Effect::Exact:
      basMain().*member.flag = boolean_of(value);
      break;
    case Effect::Setting:
      basMain().*member.text = value::text_of(value);
      break;
    case Effect::LateKey:
      late_key_ = long_of(value);
      break;
    case Effect::Own:
    case Effect::OwnAlias:
      own_ = value;
      break;
    case Effect::Key:
    case Effect::Data:
    case Effect::Heading:
      forward(member, value);
      break;
    case Effect::Nothing:
    case Effect::Connection:
    case Effect::Launch:
      break;
  }
}

void Launcher::put(const Member& member, std::shared_ptr<data::Connection> connection) {
  if (member.effect != Effect::Connection) {
    throw value::Failure(value::Error::TypeMismatch, std::string(member.name) + " takes no object");
  }
  basMain().myConn = std::move(connection);
}

void Launcher::SHowForm() {
  if (row_.report.empty()) return;
  Report& opened = report_slot(row_.opens());
  const Member* key = row_.find("PropCMasterID");
  if (key && key->effect == Effect::LateKey) opened.PropCMasterID(late_key_);
  opened.Show();
}

void Launcher::forward(const Member& member, const value::Variant& value) {
  const ReportClass* target = find_report_class(row_.opens());
  if (!target || !target->is_built()) return;
  Report& to = report_slot(target->name);
  if (member.effect == Effect::Key) {
    to.PropCMasterID(long_of(value));
  } else if (member.effect == Effect::Heading) {
    to.heading(value::text_of(value));
  } else {
    to.property(member.name, value);
  }
}

}  // namespace dorvo::frame
