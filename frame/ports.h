// The ports to a user interface. The library draws no window itself: a preview registers an implementation, and without
// one the headless ports print without any window.
#pragma once

#include <memory>
#include <string>

#include "engine/active_report.h"

namespace dorvo::frame {

class Report;

class Ports {
 public:
  virtual ~Ports() = default;

  // Viewer: runs the report and shows it, without waiting for the user. A Failure of the run goes to message() where
  // there is a window, and on to the caller.
  virtual void show(Report& report) = 0;
  // The engine's page set-up dialog: changes `settings` as the user chooses; false on Cancel, which leaves them alone.
  virtual bool page_setup(engine::PageSettings& settings) = 0;
  // A message box with one button.
  virtual void message(const std::string& text, const std::string& title) = 0;
  // The export dialog, modal, on the report's finished pages.
  virtual void export_dialog(Report& report) = 0;
  // A save-file dialog with a filter text "Description (*.ext)|*.ext"; empty on Cancel.
  virtual std::string save_file(const std::string& filter) = 0;
  // The folder browser on `initial`; false on Cancel, which leaves `folder` alone.
  virtual bool browse_folder(const std::string& title, const std::string& initial, std::string& folder) = 0;
  // One turn of the message loop.
  virtual void yield() = 0;
};

// The ports in use: those registered last, else the headless ones.
Ports& ports();
void register_ports(std::shared_ptr<Ports> ports);  // empty: back to the headless ones
// What stands in while no others are registered; `ports` is not empty.
void set_headless_ports(std::shared_ptr<Ports> ports);

// Prints without windows: runs the report, keeps its pages in it or sends them to the sink, answers every dialog
// with Cancel and collects messages.
class HeadlessPorts : public Ports {
 public:
  void show(Report& report) override;
  bool page_setup(engine::PageSettings&) override { return false; }
  void message(const std::string& text, const std::string& title) override;
  void export_dialog(Report&) override {}
  std::string save_file(const std::string&) override { return {}; }
  bool browse_folder(const std::string&, const std::string&, std::string&) override { return false; }
  void yield() override {}

  // Takes the pages of every report that is shown, as they are completed; empty: the report keeps them.
  engine::PageSink sink;
  std::vector<std::string> messages;
};

}  // namespace dorvo::frame
