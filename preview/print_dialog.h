// The print dialog, and a print job's way from it to its end.
#pragma once

#include <QString>

#include "engine/pages.h"

class QWidget;

namespace dorvo::preview {

// Asks what to print on which printer, hands it to the print server and watches the job: a job that cannot be handed
// over, is cancelled or fails says so in a box. `parent` outlives the dialog, and the watching ends with it.
void print_pages(QWidget* parent, const QString& title, const engine::Pages& pages, std::size_t current_page,
                 bool draft);

}  // namespace dorvo::preview
