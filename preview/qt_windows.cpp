#include "preview/qt_windows.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <algorithm>
#include <optional>

#include "preview/export_window.h"
#include "preview/page_setup_dialog.h"
#include "preview/screen.h"
#include "value/failure.h"

namespace dorvo::preview {

void QtWindows::show(frame::Report& report) {
  report.sink({});
  std::optional<value::Failure> failure;
  try {
    report.run();
  } catch (const value::Failure& ended) {
    failure = ended;
  }
  PreviewWindow* window = open_window(report, failure ? failure->description() : std::string());
  if (!failure) return;
  window->tell(QString::fromStdString(failure->description()), QString::fromStdString(report.Name()));
  throw *failure;
}

PreviewWindow* QtWindows::open_window(frame::Report& report, const std::string& failure) {
  auto* window = new PreviewWindow(report, failure);
  windows_.push_back(window);
  window->closed = [this, window] {
    std::erase(windows_, window);
    if (windows_.empty() && loop_) loop_->quit();
  };
  window->show();
  return window;
}

bool QtWindows::page_setup(engine::PageSettings& settings) {
  PageSetupDialog dialog(settings, QApplication::activeWindow());
  if (dialog.exec() != QDialog::Accepted) return false;
  settings = dialog.settings();
  return true;
}

void QtWindows::message(const std::string& text, const std::string& title) {
  QMessageBox box(QMessageBox::Warning, QString::fromStdString(title), QString::fromStdString(text), QMessageBox::Ok,
                  QApplication::activeWindow());
  box.setTextFormat(Qt::PlainText);
  box.exec();
}

void QtWindows::export_dialog(frame::Report& report) {
  ExportWindow window(report.Pages(), QApplication::activeWindow());
  window.exec();
  std::string told;
  for (const std::string& line : window.logic().Messages()) told += line + "\n";
  if (!told.empty()) message(told, "Export");
}

QString dialog_filter(const std::string& filter) {
  const QStringList parts = QString::fromStdString(filter).split('|');
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2)
    filters += parts[i].left(parts[i].lastIndexOf('(')).trimmed() + " (" + parts[i + 1] + ")";
  return filters.join(";;");
}

std::string QtWindows::save_file(const std::string& filter) {
  QFileDialog dialog(QApplication::activeWindow(), "Save As", QString(), dialog_filter(filter));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  const std::size_t dot = filter.rfind("*.");
  if (dot != std::string::npos) dialog.setDefaultSuffix(QString::fromStdString(filter.substr(dot + 2)));
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  return dialog.selectedFiles().first().toStdString();
}

bool QtWindows::browse_folder(const std::string& title, const std::string& initial, std::string& folder) {
  QFileDialog dialog(QApplication::activeWindow(), QString::fromStdString(title), QString::fromStdString(initial));
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return false;
  folder = dialog.selectedFiles().first().toStdString();
  return true;
}

void QtWindows::yield() {
  QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void QtWindows::turn() {
  QApplication::processEvents();
  // Windows that were closed go when a loop runs; a host that only turns has none.
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void QtWindows::run() {
  if (windows_.empty()) return;
  QEventLoop loop;
  loop_ = &loop;
  loop.exec();
  turn();
}

std::shared_ptr<QtWindows> start() {
  need_application();
  auto windows = std::make_shared<QtWindows>();
  frame::register_ports(windows);
  return windows;
}

}  // namespace dorvo::preview
