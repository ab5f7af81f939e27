#include <cstdio>
#include <string>

#include "automation/host_entry.h"
#include "host/commands.h"

namespace dorvo::host {
namespace {

void print_member(void* context, const DorvoMember* member) {
  auto& last_class = *static_cast<std::string*>(context);
  if (last_class != member->class_name) std::printf("%s\n", member->class_name);
  last_class = member->class_name;
  const char* use = member->is_method      ? "method"
                    : member->by_reference ? "write, by reference"
                    : member->is_readable  ? "read and write"
                                           : "write";
  std::printf("  %-22s %-8s %s\n", member->name, member->type, use);
}

}  // namespace

int list_classes() {
  std::string last_class;
  DorvoEachMember(nullptr, print_member, &last_class);
  return kPrinted;
}

int list_reports() {
  DorvoEachReport([](void*, const char* report,
                     std::int32_t is_built) { std::printf("%-22s %s\n", report, is_built ? "built" : "not built"); },
                  nullptr);
  return kPrinted;
}

}  // namespace dorvo::host
