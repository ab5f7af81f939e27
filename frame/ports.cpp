#include "frame/ports.h"

#include "frame/report.h"

namespace dorvo::frame {
namespace {

std::shared_ptr<Ports>& registered() {
  static std::shared_ptr<Ports> ports = std::make_shared<HeadlessPorts>();
  return ports;
}

}  // namespace

Ports& ports() {
  return *registered();
}

void register_ports(std::shared_ptr<Ports> ports) {
  registered() = ports ? std::move(ports) : std::make_shared<HeadlessPorts>();
}

void HeadlessPorts::show(Report& report) {
  if (opened) opened(report);
  report.sink(sink);
  report.run();
}

void HeadlessPorts::message(const std::string& text, const std::string&) {
  messages.push_back(text);
}

}  // namespace dorvo::frame
