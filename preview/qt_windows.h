// The ports to a user in windows: previews, dialogs, message boxes, the message loop.
#pragma once

#include <QEventLoop>
#include <QPointer>
#include <memory>
#include <vector>

#include "frame/windows.h"
#include "preview/preview_window.h"

namespace dorvo::preview {

class QtWindows : public frame::Windows {
 public:
  // Several previews may be open at once, also of one report object.
  void show(frame::Report& report) override;
  bool page_setup(engine::PageSettings& settings) override;
  void message(const std::string& text, const std::string& title) override;
  void export_dialog(frame::Report& report) override;
  std::string save_file(const std::string& filter) override;
  bool browse_folder(const std::string& title, const std::string& initial, std::string& folder) override;
  // What the user does waits until the run that yields is over, so that nothing runs in its middle.
  void yield() override;

  void run() override;
  void turn() override;
  std::size_t open() const override { return windows_.size(); }
  const std::vector<PreviewWindow*>& windows() const { return windows_; }  // in the order of opening

 private:
  PreviewWindow* open_window(frame::Report& report, const std::string& failure);

  std::vector<PreviewWindow*> windows_;
  QPointer<QEventLoop> loop_;  // of run()
};

// Makes the ports and registers them. Fails as need_application().
std::shared_ptr<QtWindows> start();

// "Text (*.TXT)|*.txt" as this toolkit's file dialogs take it.
QString dialog_filter(const std::string& filter);

}  // namespace dorvo::preview
