#include "preview/qt_ports.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <optional>

#include "frame/report.h"
#include "preview/export_window.h"
#include "preview/page_setup_dialog.h"
#include "value/failure.h"

namespace dorvo::preview {

QtPorts::~QtPorts() {
  window_closed = {};
  for (const QPointer<PreviewWindow>& window : windows_)
    if (window) window->tool_clicked = {};
}

// A run that fails is shown as far as it got, and its failure goes on to the caller.
void QtPorts::show(frame::Report& report) {
  report.sink({});
  std::optional<value::Failure> failure;
  try {
    report.run();
  } catch (const value::Failure& caught) {
    failure = caught;
  }
  auto* window = new PreviewWindow(report);
  window->tool_clicked = [this, window](const engine::Tool& tool) {
    clicked_ = window;
    window->report().ActiveReport_ToolbarClick(tool);
    clicked_ = nullptr;
  };
  std::erase_if(windows_, [](const QPointer<PreviewWindow>& old) { return old.isNull(); });
  QObject::connect(window, &QObject::destroyed, qApp, [this] {
    if (window_closed) window_closed();
  });
  windows_.emplace_back(window);
  window->show();
  if (!failure) return;
  message(failure->description(), report.Name());
  throw *failure;
}

bool QtPorts::page_setup(engine::PageSettings& settings) {
  return ask_page_setup(QApplication::activeWindow(), settings);
}

void QtPorts::message(const std::string& text, const std::string& title) {
  QMessageBox box(QMessageBox::Warning, QString::fromStdString(title), QString::fromStdString(text), QMessageBox::Ok,
                  QApplication::activeWindow());
  box.setTextFormat(Qt::PlainText);
  box.exec();
}

// On the pages that the window shows in which the button was clicked; a later run may have given the report others.
void QtPorts::export_dialog(frame::Report& report) {
  ExportWindow window(clicked_ ? clicked_->pages() : report.Pages(), clicked_);
  window.exec();
  std::string told;
  for (const std::string& line : window.logic().Messages()) told += line + "\n";
  if (!told.empty()) message(told, "Export");
}

std::string QtPorts::save_file(const std::string& filter) {
  const QString shown = QString::fromStdString(filter.substr(0, filter.find('|')));
  return QFileDialog::getSaveFileName(QApplication::activeWindow(), {}, {}, shown).toStdString();
}

bool QtPorts::browse_folder(const std::string& title, const std::string& initial, std::string& folder) {
  const QString chosen = QFileDialog::getExistingDirectory(QApplication::activeWindow(), QString::fromStdString(title),
                                                           QString::fromStdString(initial));
  if (chosen.isEmpty()) return false;
  folder = chosen.toStdString();
  return true;
}

void QtPorts::yield() {
  QApplication::processEvents();
}

std::vector<PreviewWindow*> QtPorts::windows() const {
  std::vector<PreviewWindow*> open;
  for (const QPointer<PreviewWindow>& window : windows_)
    if (window && window->isVisible()) open.push_back(window);
  return open;
}

}  // namespace dorvo::preview
