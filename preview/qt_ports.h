// The ports of the frame as windows.
#pragma once

#include <QPointer>
#include <functional>
#include <vector>

#include "frame/ports.h"
#include "preview/preview_window.h"

namespace dorvo::preview {

class QtPorts : public frame::Ports {
 public:
  ~QtPorts() override;
  void show(frame::Report& report) override;
  bool page_setup(engine::PageSettings& settings) override;
  void message(const std::string& text, const std::string& title) override;
  void export_dialog(frame::Report& report) override;
  std::string save_file(const std::string& filter) override;
  bool browse_folder(const std::string& title, const std::string& initial, std::string& folder) override;
  void yield() override;

  std::function<void()> window_closed;

  // Those that are open, in the order in which they were opened.
  std::vector<PreviewWindow*> windows() const;

 private:
  std::vector<QPointer<PreviewWindow>> windows_;
  PreviewWindow* clicked_ = nullptr;  // in which a tool that a report added is at work
};

}  // namespace dorvo::preview
