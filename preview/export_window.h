// The window of the export dialog: its controls under their names, over frame/export_dialog.h, which is all of its
// logic.
//
// Controls that exist once a format bear their format's number: "txtFilename(1)". Modal; one export.
#pragma once

#include <QDialog>
#include <QVector>
#include <functional>
#include <vector>

#include "frame/export_dialog.h"

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace dorvo::preview {

class ExportWindow : public QDialog {
 public:
  // `pages` outlive the window.
  explicit ExportWindow(const engine::Pages& pages, QWidget* parent = nullptr);

  const frame::ExportDialog& logic() const { return logic_; }

 private:
  // One line of a panel: a caption, the widget, a caption behind it.
  class Panel;

  QWidget* banner();
  QWidget* body();
  QWidget* buttons();
  QWidget* panel(std::size_t format);
  void pdf_options(Panel& panel);
  void html_options(Panel& panel);
  void xls_options(Panel& panel);
  void text_options(Panel& panel);
  void folder_row(Panel& panel, const char* caption, const char* box, const char* button, std::string& folder,
                  void (frame::ExportDialog::*handler)());

  // A widget and the variable of the logic behind it.
  QLineEdit* line(const QString& name, std::string& text);
  QComboBox* list(const char* name, int& index, const std::vector<std::string_view>& texts);
  QCheckBox* check(const char* name, const char* caption, bool& value);
  QListWidget* fonts();
  QPushButton* browse(const QString& name, const std::function<void()>& handler);

  // Runs a handler on what the controls hold, and shows what it made of it.
  void handle(const std::function<void()>& handler);
  void load();
  void store();
  void place_panels();
  int dots(int twips) const;

  frame::ExportDialog logic_;
  std::vector<std::function<void()>> loads_;
  std::vector<std::function<void()>> stores_;
  std::vector<QWidget*> panels_;
  int panel_top_ = 0;
  bool is_loading_ = false;
};

}  // namespace dorvo::preview
