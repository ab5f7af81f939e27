// The public classes: one row each in one table, with the members that a host finds by name.
//
// The table says what a member does; launcher.h does it. Names keep their spelling, whatever their capitals: hosts
// bind by them. Numbers are part of the interface and are never given twice or anew.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "frame/settings.h"

namespace dorvo::frame {

// The type that a member takes. A VariantBoolean or VariantText takes any value and converts it itself, so that a wrong
// one is a failure of the property and no mismatch of types.
enum class Argument { Boolean, Long, Text, VariantBoolean, VariantText, Variant, Object };

enum class Effect {
  Option,      // one assignment into basMain: a flag
  Exact,       // likewise, and only the Boolean True counts as true
  Setting,     // one assignment into basMain: a text
  Connection,  // one assignment into basMain: the open connection, by reference
  Key,         // goes to PropCMasterID of the report that `onethirty` selects now
  LateKey,     // kept by the launcher until SHowForm hands it over
  Data,        // goes to the like-named property of the report
  Heading,     // becomes the caption of the report's label lblHeading
  Own,         // kept by the launcher, read and written
  OwnAlias,    // another writer of the launcher's own value
  Nothing,     // accepted, and kept by nobody
  Launch
};

struct Member {
  int id;  // the member's number, the same in all classes
  std::string_view name;
  frame::Argument argument;
  frame::Effect effect;
  bool Settings::*flag = nullptr;         // of Option and Exact
  std::string Settings::*text = nullptr;  // of Setting

  bool is_method() const { return effect == Effect::Launch; }
  bool is_readable() const { return effect == Effect::Own; }
};

struct LauncherClass {
  int number;  // class and interface ids are made of it
  std::string_view name;
  std::string_view report;  // empty: opens nothing
  std::string_view twin;    // the report that `onethirty` selects, empty when none
  std::vector<std::span<const Member>> members;

  // The report that `onethirty` selects now.
  std::string_view opens() const { return basMain().onethirty && !twin.empty() ? twin : report; }

  // Without regard to case; nullptr when the class has it not.
  const Member* find(std::string_view member) const;
  const Member* find(int id) const;
};

const std::vector<LauncherClass>& launcher_classes();

// Without regard to case; nullptr for a name that no class bears.
const LauncherClass* find_launcher_class(std::string_view name);

// A row for a report class that has no launcher, for layout authors and checks: every option, key and data member.
// `report` must outlive it.
LauncherClass direct_launcher(std::string_view report);

}  // namespace dorvo::frame
