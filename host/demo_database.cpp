#include "host/commands.h"
#include "practice/practice.h"
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

}  // namespace dorvo::host
