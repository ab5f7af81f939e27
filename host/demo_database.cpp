#include <algorithm>
#include <array>
#include <cstdio>

#include "host/client.h"
#include "host/commands.h"
#include "practice/practice.h"
#include "practice/schema.h"
#include "value/failure.h"

namespace dorvo::host {

int write_demo_database(const DemoPractice& demo) {
  try {
    practice::write_practice(demo.file, {.dealers = demo.dealers, .years = demo.years, .seed = demo.seed});
  } catch (const value::Failure& failure) {
    tell(failure.description());
    return failure.number() == value::Error::Overflow ? kUsage : kFailed;
  }
  return kPrinted;
}

int write_schema(const std::string& dialect) {
  struct Row {
    const char* name;
    practice::Dialect dialect;
  };
  static constexpr std::array<Row, 3> kDialects = {{{"sqlite", practice::Dialect::Sqlite},
                                                    {"sqlserver", practice::Dialect::TransactSql},
                                                    {"postgresql", practice::Dialect::PostgreSql}}};
  const auto* row =
      std::find_if(kDialects.begin(), kDialects.end(), [&](const Row& known) { return known.name == dialect; });
  if (row == kDialects.end()) throw UsageError("\"" + dialect + "\": expected sqlite, sqlserver or postgresql");
  std::fputs(practice::ddl(row->dialect).c_str(), stdout);
  return kPrinted;
}

}  // namespace dorvo::host
