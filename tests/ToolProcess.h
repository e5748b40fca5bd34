// Runs the zelvo-unicode tool as a process for the tool tests: arguments,
// standard input from a pipe or a terminal, and what comes back.
#pragma once

#include <dirent.h>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace zelvo_tool_test {

// The tool's path comes from the build as ZELVO_UNICODE_TOOL.
inline const char* toolPath() {
#ifdef ZELVO_UNICODE_TOOL
  return ZELVO_UNICODE_TOOL;
#else
  return nullptr;
#endif
}

#define REQUIRE_TOOL()                                                     \
  do {                                                                     \
    if (::zelvo_tool_test::toolPath() == nullptr)                          \
      GTEST_SKIP() << "the tool is not built (ZELVO_UNICODE_BUILD_TOOLS)"; \
  } while (0)

struct ToolRun {
  int status = -1;  // the exit status, or 128 + the signal
  std::string out;
  std::string err;
  long maxResidentKiB = 0;
};

enum class StandardInput { pipe, terminal };

// What runTool leaves in `err`, with status -1, where the system has no
// pseudo-terminal to give.
constexpr const char* kNoTerminal = "no pseudo-terminal could be opened";

// The tool's command line: its path, then `args`.
inline std::vector<std::string> commandLine(
    const std::vector<std::string>& args) {
  std::vector<std::string> line{toolPath()};
  line.insert(line.end(), args.begin(), args.end());
  return line;
}

// The arguments as execv takes them, pointing into `line`.
inline std::vector<char*> argvOf(std::vector<std::string>& line) {
  std::vector<char*> argv;
  for (std::string& argument : line) argv.push_back(&argument[0]);
  argv.push_back(nullptr);
  return argv;
}

// Runs the tool with `args`, writes `input` to its standard input (a pipe,
// or a terminal with nothing typed), and collects both outputs.
inline ToolRun runTool(const std::vector<std::string>& args,
                       const std::string& input = "",
                       StandardInput kind = StandardInput::pipe) {
  ToolRun run;
  signal(SIGPIPE, SIG_IGN);
  int terminal = -1;
  std::string terminalName;
  if (kind == StandardInput::terminal) {
    terminal = posix_openpt(O_RDWR | O_NOCTTY);
    if (terminal < 0 || grantpt(terminal) != 0 || unlockpt(terminal) != 0) {
      if (terminal >= 0) close(terminal);
      run.err = kNoTerminal;
      return run;
    }
    terminalName = ptsname(terminal);
  }
  int in[2], out[2], err[2];
  if (pipe(in) != 0 || pipe(out) != 0 || pipe(err) != 0) return run;
  std::vector<std::string> line = commandLine(args);
  std::vector<char*> argv = argvOf(line);

  pid_t child = fork();
  if (child == 0) {
    if (kind == StandardInput::terminal) {
      int slave = open(terminalName.c_str(), O_RDWR | O_NOCTTY);
      dup2(slave, 0);
    } else {
      dup2(in[0], 0);
    }
    dup2(out[1], 1);
    dup2(err[1], 2);
    for (int fd : {in[0], in[1], out[0], out[1], err[0], err[1]}) close(fd);
    if (terminal >= 0) close(terminal);
    execv(argv[0], argv.data());
    _exit(127);
  }
  close(in[0]);
  close(out[1]);
  close(err[1]);
  int writeEnd = in[1];
  if (kind == StandardInput::terminal) {
    close(writeEnd);
    writeEnd = -1;
  }
  std::size_t written = 0;
  if (writeEnd >= 0 && input.empty()) {
    close(writeEnd);
    writeEnd = -1;
  }
  if (writeEnd >= 0) fcntl(writeEnd, F_SETFL, O_NONBLOCK);
  bool outOpen = true, errOpen = true;
  char buffer[65536];
  while (outOpen || errOpen) {
    std::vector<pollfd> fds;
    if (outOpen) fds.push_back({out[0], POLLIN, 0});
    if (errOpen) fds.push_back({err[0], POLLIN, 0});
    if (writeEnd >= 0) fds.push_back({writeEnd, POLLOUT, 0});
    if (poll(fds.data(), fds.size(), -1) < 0) {
      if (errno == EINTR) continue;
      break;
    }
    for (const pollfd& p : fds) {
      if (p.revents == 0) continue;
      if (p.fd == writeEnd) {
        ssize_t n = write(writeEnd, input.data() + written,
                          std::min<std::size_t>(input.size() - written, 65536));
        if (n > 0) written += static_cast<std::size_t>(n);
        if ((n < 0 && errno != EAGAIN) || written == input.size()) {
          close(writeEnd);
          writeEnd = -1;
        }
        continue;
      }
      ssize_t n = read(p.fd, buffer, sizeof buffer);
      if (n > 0) {
        (p.fd == out[0] ? run.out : run.err).append(buffer, n);
      } else if (n == 0 || errno != EINTR) {
        (p.fd == out[0] ? outOpen : errOpen) = false;
      }
    }
  }
  if (writeEnd >= 0) close(writeEnd);
  close(out[0]);
  close(err[0]);
  int status = 0;
  rusage usage{};
  while (wait4(child, &status, 0, &usage) < 0 && errno == EINTR) {
  }
  if (terminal >= 0) close(terminal);
  run.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  run.maxResidentKiB = usage.ru_maxrss;
  return run;
}

// Starts the tool with `args`, standard input from `inputPath` and standard
// output to `outputPath`, standard error dropped, and returns at once, so
// that the caller can work while the tool runs. A child's peak resident size
// counts the memory it shared with this process until it ran the tool, so
// start the tool while this process is small.
inline pid_t startTool(const std::vector<std::string>& args,
                       const std::string& inputPath,
                       const std::string& outputPath) {
  std::vector<std::string> line = commandLine(args);
  std::vector<char*> argv = argvOf(line);
  pid_t child = fork();
  if (child == 0) {
    int in = open(inputPath.c_str(), O_RDONLY);
    int out = open(outputPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    int null = open("/dev/null", O_WRONLY);
    if (in < 0 || out < 0 || null < 0) _exit(127);
    dup2(in, 0);
    dup2(out, 1);
    dup2(null, 2);
    execv(argv[0], argv.data());
    _exit(127);
  }
  return child;
}

// Waits for a tool that startTool started: its status and peak resident
// size; `out` and `err` stay empty.
inline ToolRun finishTool(pid_t child) {
  ToolRun run;
  int status = 0;
  rusage usage{};
  while (wait4(child, &status, 0, &usage) < 0 && errno == EINTR) {
  }
  run.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  run.maxResidentKiB = usage.ru_maxrss;
  return run;
}

inline std::string readFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

// A file in the temporary folder that removes itself.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& content) {
    char name[] = "/tmp/zelvo-tool-test-XXXXXX";
    int fd = mkstemp(name);
    path_ = name;
    std::size_t done = 0;
    while (done < content.size()) {
      ssize_t n = write(fd, content.data() + done, content.size() - done);
      if (n <= 0) break;
      done += static_cast<std::size_t>(n);
    }
    close(fd);
  }
  ~TemporaryFile() { unlink(path_.c_str()); }
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

struct NamedText {
  std::string name;
  std::string bytes;
};

// The corpus files whose names end in `suffix` (".utf8.txt" or
// ".latin1.txt"), sorted by name; empty when $ZELVO_CORPUS_DIR is unset or
// has none.
inline std::vector<NamedText> corpusFiles(const std::string& suffix) {
  std::vector<NamedText> texts;
  const char* dir = std::getenv("ZELVO_CORPUS_DIR");
  if (dir == nullptr) return texts;
  DIR* folder = opendir(dir);
  if (folder == nullptr) return texts;
  while (dirent* entry = readdir(folder)) {
    std::string name = entry->d_name;
    if (name.size() > suffix.size() &&
        name.compare(name.size() - suffix.size(), suffix.size(), suffix) == 0) {
      texts.push_back({name, readFile(std::string(dir) + "/" + name)});
    }
  }
  closedir(folder);
  std::sort(
      texts.begin(), texts.end(),
      [](const NamedText& a, const NamedText& b) { return a.name < b.name; });
  return texts;
}

}  // namespace zelvo_tool_test
