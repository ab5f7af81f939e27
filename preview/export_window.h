// The export dialog's window: shows the controls of the dialog's logic under their names and captions, and calls its
// handlers.
#pragma once

#include <QDialog>
#include <array>
#include <functional>
#include <vector>

#include "frame/export_dialog.h"

class QFormLayout;
class QVBoxLayout;

namespace dorvo::preview {

class ExportWindow : public QDialog {
 public:
  // `pages` outlive the window.
  explicit ExportWindow(const engine::Pages& pages, QWidget* parent = nullptr);

  frame::ExportDialog& logic() { return logic_; }

 private:
  void make_banner(QVBoxLayout* all);
  void make_panels(QVBoxLayout* all);
  void make_pdf(QFormLayout* form);
  void make_html(QFormLayout* form);
  void make_xls(QFormLayout* form);
  void make_text(QFormLayout* form);
  void make_buttons(QVBoxLayout* all);
  void add_file_name(QFormLayout* form, std::size_t format);
  void add_text(QFormLayout* form, const char* caption, const char* name, std::string& box, const char* unit = nullptr);
  void add_folder(QFormLayout* form, const char* caption, const char* name, const char* button_name, std::string& box,
                  void (frame::ExportDialog::*browse)());
  void add_check(QFormLayout* form, const char* caption, const char* name, bool& box);
  template <class Texts>
  void add_list(QFormLayout* form, const char* caption, const char* name, const Texts& texts, int& index);
  // Runs a handler on what the user has entered, and shows what it made of it.
  void handle(const std::function<void()>& handler);
  void show_state();

  frame::ExportDialog logic_;
  std::array<QWidget*, frame::kDialogFormats> panels_{};
  std::vector<std::function<void()>> read_;  // from the window into the logic, and back
  std::vector<std::function<void()>> write_;
};

}  // namespace dorvo::preview
