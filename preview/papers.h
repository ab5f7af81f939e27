// Paper sizes that dialogs offer, and lengths as users read them. Inside, lengths are twips.
#pragma once

#include <QComboBox>
#include <QDoubleSpinBox>
#include <vector>

#include "engine/active_report.h"

namespace dorvo::preview {

struct Paper {
  int code;  // as PageSettings::PaperSize
  const char* name;
};
const std::vector<Paper>& papers();  // custom paper last

// Width and height held upright of a paper that is not custom, twips.
QSize paper_size(int code);
// The code of the paper that has this size, whichever way it is held; else of custom paper.
int paper_of(const QSize& twips);
QString size_text(const QSize& twips);  // "210 x 297 mm"

// A list of all papers; an entry's data is its code.
QComboBox* paper_list(const QString& name, int chosen);

// A box for a length; whole twips come back as they went in.
QDoubleSpinBox* length_box(const QString& name, double twips, double least_mm, double most_mm);
int twips_in(const QDoubleSpinBox& box);
void show_twips(QDoubleSpinBox& box, double twips);
// Fills the lengths of a paper that has its own; those of custom paper are the user's to write.
void show_paper(int code, QDoubleSpinBox& width, QDoubleSpinBox& height);

}  // namespace dorvo::preview
