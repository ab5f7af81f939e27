#include "data/socket_limits.h"

#include <dirent.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <cstdlib>
#include <memory>

namespace dorvo::data {
namespace {

constexpr int kIdleSeconds = 6;  // of silence before the peer is asked
constexpr int kAskEvery = 3;
constexpr int kAskTimes = 3;
constexpr int kUnansweredMilliseconds = (kIdleSeconds + kAskEvery * kAskTimes) * 1000;

struct CloseFolder {
  void operator()(DIR* folder) const { closedir(folder); }
};

std::set<int> open_files() {
  std::set<int> files;
  const std::unique_ptr<DIR, CloseFolder> folder(opendir("/proc/self/fd"));
  while (const dirent* entry = folder ? readdir(folder.get()) : nullptr)
    if (entry->d_name[0] != '.') files.insert(std::atoi(entry->d_name));
  if (folder) files.erase(dirfd(folder.get()));
  return files;
}

int option(int file, int level, int name) {
  int value = -1;
  socklen_t size = sizeof value;
  return getsockopt(file, level, name, &value, &size) == 0 ? value : -1;
}

bool is_tcp(int file) {
  const int family = option(file, SOL_SOCKET, SO_DOMAIN);
  return (family == AF_INET || family == AF_INET6) && option(file, SOL_SOCKET, SO_TYPE) == SOCK_STREAM;
}

// A limit that the system does not take leaves its own in force.
void set(int file, int level, int name, int value) {
  setsockopt(file, level, name, &value, sizeof value);
}

}  // namespace

SocketLimits::SocketLimits() : before_(open_files()) {}

void SocketLimits::limit_new_sockets() const {
  for (const int file : open_files()) {
    if (before_.count(file) != 0 || !is_tcp(file)) continue;
    set(file, SOL_SOCKET, SO_KEEPALIVE, 1);
    set(file, IPPROTO_TCP, TCP_KEEPIDLE, kIdleSeconds);
    set(file, IPPROTO_TCP, TCP_KEEPINTVL, kAskEvery);
    set(file, IPPROTO_TCP, TCP_KEEPCNT, kAskTimes);
    set(file, IPPROTO_TCP, TCP_USER_TIMEOUT, kUnansweredMilliseconds);
  }
}

}  // namespace dorvo::data
