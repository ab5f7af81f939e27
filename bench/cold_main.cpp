// bench_cold RUNS COMMAND...: starts a command so many times, one after another, and tells the median and the least of
// its wall time and of its processor time. Its output is thrown away.
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

struct Taken {
  double wall, processor;  // milliseconds
};

double milliseconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) * 1000 + static_cast<double>(time.tv_usec) / 1000;
}

Taken run_once(char** command) {
  const auto start = std::chrono::steady_clock::now();
  const pid_t child = fork();
  if (child == 0) {
    const int nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, 1);
    execvp(command[0], command);
    std::perror(command[0]);
    std::_Exit(127);
  }
  int status = 0;
  rusage usage = {};
  wait4(child, &status, 0, &usage);
  const auto wall = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
  if (status != 0) {
    std::fprintf(stderr, "%s ended with status %d\n", command[0], WEXITSTATUS(status));
    std::exit(1);
  }
  return {wall, milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime)};
}

void tell(const char* what, std::vector<double> times) {
  std::sort(times.begin(), times.end());
  std::printf("  %s %.1f ms (least %.1f)", what, times[times.size() / 2], times.front());
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 3 || std::atoi(arguments[1]) < 1) {
    std::fprintf(stderr, "usage: bench_cold RUNS COMMAND...\n");
    return 2;
  }
  std::vector<double> wall, processor;
  for (int run = 0; run < std::atoi(arguments[1]); ++run) {
    const Taken taken = run_once(arguments + 2);
    wall.push_back(taken.wall);
    processor.push_back(taken.processor);
  }
  tell("wall", wall);
  tell("processor", processor);
  std::printf("\n");
}
