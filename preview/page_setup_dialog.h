// The page set-up dialog: paper, margins and orientation of a report, before it runs.
#pragma once

#include "engine/active_report.h"

class QWidget;

namespace dorvo::preview {

// True when the user took the settings; false on Cancel, which leaves them alone.
bool ask_page_setup(QWidget* parent, engine::PageSettings& settings);

}  // namespace dorvo::preview
