// Start-up cost as a host sees it: whole processes, timed from spawn to exit.
// An empty program, one that loads the library, and one that makes ICU ready
// for the same features run in turn, many times over, so that the noise of a
// shared machine falls on all three alike; the table gives the median and the
// spread of each, with its resident memory and page faults, and the load of
// the library and of ICU above the empty program.
//
//   StartupBench [runs [label=program ...]]
//
// 51 runs of each program by default. Further programs join the round, such
// as the same one linked to an earlier build of the library, for a before
// and after measured in one run.
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

extern char** environ;

namespace {

struct Program {
  const char* name;
  const char* path;
  std::vector<double> milliseconds;
  std::vector<double> residentKiB;
  std::vector<double> minorFaults;
};

// Runs the program once and records its wall time, peak resident memory and
// minor page faults. Returns false if it could not run or did not exit 0.
bool runOnce(Program& program, bool record) {
  char* const argv[] = {const_cast<char*>(program.path), nullptr};
  const auto start = std::chrono::steady_clock::now();
  pid_t pid = 0;
  if (posix_spawn(&pid, program.path, nullptr, nullptr, argv, environ) != 0)
    return false;
  int status = 0;
  rusage usage{};
  if (wait4(pid, &status, 0, &usage) != pid) return false;
  const auto stop = std::chrono::steady_clock::now();
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) return false;
  if (record) {
    program.milliseconds.push_back(
        std::chrono::duration<double, std::milli>(stop - start).count());
    program.residentKiB.push_back(static_cast<double>(usage.ru_maxrss));
    program.minorFaults.push_back(static_cast<double>(usage.ru_minflt));
  }
  return true;
}

double quantile(std::vector<double> values, double q) {
  std::sort(values.begin(), values.end());
  const size_t at =
      static_cast<size_t>(q * static_cast<double>(values.size() - 1) + 0.5);
  return values[at];
}

}  // namespace

int main(int argc, char** argv) {
  const int runs = argc > 1 ? std::atoi(argv[1]) : 51;
  if (runs < 1) {
    std::fprintf(stderr, "usage: StartupBench [runs [label=program ...]]\n");
    return 2;
  }
  std::vector<Program> programs = {
    {"empty program", ZELVO_STARTUP_EMPTY, {}, {}, {}},
    {"zelvo-unicode", ZELVO_STARTUP_LIBRARY, {}, {}, {}},
#if defined(ZELVO_STARTUP_ICU)
    {"ICU, same features", ZELVO_STARTUP_ICU, {}, {}, {}},
#endif
  };
  for (int k = 2; k < argc; ++k) {
    char* const split = std::strchr(argv[k], '=');
    if (split == nullptr) {
      std::fprintf(stderr, "StartupBench: %s is not label=program\n", argv[k]);
      return 2;
    }
    *split = '\0';
    programs.push_back({argv[k], split + 1, {}, {}, {}});
  }
  // A few unrecorded rounds first, so that every file is in the page cache.
  for (int round = -3; round < runs; ++round) {
    for (Program& program : programs) {
      if (!runOnce(program, round >= 0)) {
        std::fprintf(stderr, "StartupBench: %s failed to run\n", program.path);
        return 1;
      }
    }
  }
  const double empty = quantile(programs[0].milliseconds, 0.5);
  std::printf("%d runs of each program, in turn\n\n", runs);
  std::printf("%-20s %9s %9s %9s %11s %10s %8s\n", "program", "median ms",
              "p10 ms", "p90 ms", "above empty", "max RSS KiB", "minflt");
  for (const Program& p : programs) {
    const double median = quantile(p.milliseconds, 0.5);
    std::printf("%-20s %9.3f %9.3f %9.3f %11.3f %10.0f %8.0f\n", p.name, median,
                quantile(p.milliseconds, 0.1), quantile(p.milliseconds, 0.9),
                median - empty, quantile(p.residentKiB, 0.5),
                quantile(p.minorFaults, 0.5));
  }
  if (programs.size() > 2) {
    const double ours = quantile(programs[1].milliseconds, 0.5) - empty;
    const double icu = quantile(programs[2].milliseconds, 0.5) - empty;
    std::printf("\nload above the empty program: zelvo-unicode / ICU = %.2f\n",
                ours / icu);
  }
  return 0;
}
