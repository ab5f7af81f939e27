#include "frame/ports.h"

#include "frame/report.h"

namespace dorvo::frame {
namespace {

struct Registered {
  std::shared_ptr<Ports> ports;
  std::shared_ptr<Ports> headless = std::make_shared<HeadlessPorts>();
};

Registered& registered() {
  static Registered all;
  return all;
}

}  // namespace

Ports& ports() {
  return registered().ports ? *registered().ports : *registered().headless;
}

void register_ports(std::shared_ptr<Ports> ports) {
  registered().ports = std::move(ports);
}

void set_headless_ports(std::shared_ptr<Ports> ports) {
  registered().headless = std::move(ports);
}

void HeadlessPorts::show(Report& report) {
  report.sink(sink);
  report.run();
}

void HeadlessPorts::message(const std::string& text, const std::string&) {
  messages.push_back(text);
}

}  // namespace dorvo::frame
