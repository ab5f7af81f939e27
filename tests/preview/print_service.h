// A print service of a test's own: CUPS as an ordinary program, on loopback, with its files in a folder of its own.
//
// Queues: "Paper" keeps what it gets, "Stopped" never prints, "Broken" fails every job. Their ways to paper are
// scripts.
#pragma once

#include <arpa/inet.h>
#include <cups/cups.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <csignal>

#include <filesystem>
#include <fstream>
#include <string>

namespace dorvo::preview {

class PrintService {
 public:
  static constexpr const char* kProgram = "/usr/sbin/cupsd";
  static bool is_installed() { return access(kProgram, X_OK) == 0; }

  PrintService() : port_(free_port()) {
    std::string pattern = (std::filesystem::temp_directory_path() / "dorvo-cups-XXXXXX").string();
    folder_ = mkdtemp(pattern.data());
    std::filesystem::permissions(folder_, std::filesystem::perms(0755));
    for (const char* name : {"root", "spool", "cache", "run", "tmp", "bin/backend"})
      std::filesystem::create_directories(folder_ / name);
    std::filesystem::permissions(folder_ / "tmp", std::filesystem::perms(0777));
    std::filesystem::create_directory_symlink("/usr/lib/cups/daemon", folder_ / "bin/daemon");
    write_files();
    process_ = fork();
    if (process_ == 0) {
      const std::string settings = (folder_ / "root/cupsd.conf").string();
      const std::string files = (folder_ / "root/cups-files.conf").string();
      execl(kProgram, kProgram, "-f", "-c", settings.c_str(), "-s", files.c_str(), nullptr);
      _exit(127);
    }
    cupsSetServer(("127.0.0.1:" + std::to_string(port_)).c_str());
  }
  ~PrintService() {
    kill(process_, SIGTERM);
    waitpid(process_, nullptr, 0);
    std::filesystem::remove_all(folder_);
  }

  // What came out, and the options that came with it.
  std::string paper() const { return (folder_ / "tmp/paper").string(); }
  std::string options() const { return (folder_ / "tmp/options").string(); }
  // Whether it answers yet.
  bool is_up() const {
    http_t* http = httpConnect2("127.0.0.1", port_, nullptr, AF_INET, HTTP_ENCRYPTION_IF_REQUESTED, 1, 200, nullptr);
    if (http) httpClose(http);
    return http != nullptr;
  }

 private:
  static int free_port() {
    const int probe = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof place;
    bind(probe, reinterpret_cast<sockaddr*>(&place), size);
    getsockname(probe, reinterpret_cast<sockaddr*>(&place), &size);
    close(probe);
    return ntohs(place.sin_port);
  }

  void write_files() const {
    const std::string at = folder_.string();
    std::ofstream(folder_ / "root/cupsd.conf") << "Listen 127.0.0.1:" << port_
                                               << "\nBrowsing Off\nDefaultAuthType None\n"
                                                  "<Location />\nOrder allow,deny\nAllow from 127.0.0.1\n</Location>\n"
                                                  "<Policy default>\n<Limit All>\nOrder allow,deny\n"
                                                  "Allow from 127.0.0.1\n</Limit>\n</Policy>\n";
    std::ofstream(folder_ / "root/cups-files.conf")
        << "ServerRoot " << at << "/root\nRequestRoot " << at << "/spool\nCacheDir " << at << "/cache\nStateDir " << at
        << "/run\nTempDir " << at << "/tmp\nErrorLog " << at << "/error_log\nAccessLog " << at
        << "/access_log\nPageLog " << at << "/page_log\nServerBin " << at << "/bin\n";
    std::ofstream queues(folder_ / "root/printers.conf");
    const auto queue = [&](const char* kind, const char* name, const std::string& device, const char* state) {
      queues << "<" << kind << " " << name << ">\nInfo " << name << " queue\nDeviceURI " << device << "\nState "
             << state << "\nAccepting Yes\nErrorPolicy abort-job\nJobSheets none none\n</" << kind << ">\n";
    };
    queue("DefaultPrinter", "Paper", "paper:/", "Idle");
    queue("Printer", "Stopped", "paper:/", "Stopped");
    queue("Printer", "Broken", "broken:/", "Idle");
    backend("paper", "echo \"$4 $5\" > " + options() + " && cat \"${6:-/dev/stdin}\" > " + paper());
    backend("broken", "echo 'ERROR: out of ink' >&2; exit 1");
  }

  // As the service runs it: job, user, title, copies, options and, when it is not on the standard input, a file.
  void backend(const std::string& name, const std::string& does) const {
    const std::filesystem::path file = folder_ / "bin/backend" / name;
    std::ofstream(file) << "#!/bin/sh\n[ $# -eq 0 ] && exit 0\n" << does << "\n";
    std::filesystem::permissions(file, std::filesystem::perms(0755));
  }

  int port_;
  std::filesystem::path folder_;
  pid_t process_ = -1;
};

}  // namespace dorvo::preview
