// Every report class of the library, in one list: new reports get one row here.
#pragma once

#include <vector>

#include "frame/slots.h"

namespace dorvo::automation {

std::vector<frame::ReportClass> report_list();

}  // namespace dorvo::automation
