// Running other programs with an argument list.

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <thread>

#include "platform/descriptor.h"
#include "platform/file_errors.h"
#include "platform/host.h"
#include "platform/process.h"

extern char** environ;

namespace velmora::platform {
namespace {

struct Pipe {
  Descriptor Read, Write;

  bool Open() {
    std::array<int, 2> ends{-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) return false;
    Read = Descriptor(ends[0]);
    Write = Descriptor(ends[1]);
    return true;
  }
};

// A child that ends without reading its input must not end us too.
class BrokenPipeGuard {
 public:
  BrokenPipeGuard() {
    sigemptyset(&brokenPipe_);
    sigaddset(&brokenPipe_, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &brokenPipe_, &before_);
  }
  BrokenPipeGuard(const BrokenPipeGuard&) = delete;
  BrokenPipeGuard& operator=(const BrokenPipeGuard&) = delete;
  ~BrokenPipeGuard() {
    const struct timespec none {};
    while (sigtimedwait(&brokenPipe_, nullptr, &none) >= 0) {  // what came meanwhile is ours
    }
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
  }
  const sigset_t& Before() const { return before_; }

 private:
  sigset_t brokenPipe_{};
  sigset_t before_{};
};

struct Start {
  int Input, Output;
  bool OwnSession;
  sigset_t SignalMask;
};

int SetAttributes(posix_spawnattr_t& attributes, const Start& start) {
  sigset_t defaults{};
  sigemptyset(&defaults);
  sigaddset(&defaults, SIGPIPE);
  const int session = start.OwnSession ? POSIX_SPAWN_SETSID : 0;
  const int flags = POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | session;
  int error = posix_spawnattr_setsigmask(&attributes, &start.SignalMask);
  if (error == 0) error = posix_spawnattr_setsigdefault(&attributes, &defaults);
  if (error == 0) error = posix_spawnattr_setflags(&attributes, static_cast<short>(flags));
  return error;
}

int SetActions(posix_spawn_file_actions_t& actions, const Start& start) {
  int error = posix_spawn_file_actions_adddup2(&actions, start.Input, STDIN_FILENO);
  if (error == 0) error = posix_spawn_file_actions_adddup2(&actions, start.Output, STDOUT_FILENO);
  if (error == 0) error = posix_spawn_file_actions_adddup2(&actions, start.Output, STDERR_FILENO);
  return error;
}

// 0 or an errno.
int Spawn(const std::vector<std::string>& arguments, const Start& start, pid_t& child) {
  std::vector<std::string> copies = arguments;
  std::vector<char*> argv;
  for (std::string& argument : copies) argv.push_back(argument.data());
  argv.push_back(nullptr);

  posix_spawn_file_actions_t actions;
  posix_spawnattr_t attributes;
  int error = posix_spawn_file_actions_init(&actions);
  if (error != 0) return error;
  error = posix_spawnattr_init(&attributes);
  if (error == 0) {
    error = SetActions(actions, start);
    if (error == 0) error = SetAttributes(attributes, start);
    if (error == 0) error = posix_spawnp(&child, argv[0], &actions, &attributes, argv.data(), environ);
    posix_spawnattr_destroy(&attributes);
  }
  posix_spawn_file_actions_destroy(&actions);
  return error;
}

// A program ended by a signal counts as the shells count it.
int ExitStatusOf(int status) { return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status); }

// Feeds and reads at once, so that neither side waits for the other for ever.
std::string Converse(Descriptor toChild, const Descriptor& fromChild, std::string_view input) {
  std::string output;
  if (input.empty()) toChild = Descriptor();
  for (;;) {
    std::array<pollfd, 2> ends{{{fromChild.Get(), POLLIN, 0}, {toChild.Get(), POLLOUT, 0}}};
    if (poll(ends.data(), ends.size(), -1) < 0) {
      if (errno == EINTR) continue;
      return output;
    }
    if (ends[1].revents != 0) {
      const ssize_t written = write(toChild.Get(), input.data(), input.size());
      if (written > 0) input.remove_prefix(static_cast<std::size_t>(written));
      const bool isRefused = written < 0 && errno != EAGAIN && errno != EINTR;
      if (input.empty() || isRefused) toChild = Descriptor();
    }
    if (ends[0].revents != 0) {
      std::array<char, 65'536> buffer;
      const ssize_t taken = read(fromChild.Get(), buffer.data(), buffer.size());
      if (taken > 0) output.append(buffer.data(), static_cast<std::size_t>(taken));
      if (taken == 0 || (taken < 0 && errno != EINTR)) return output;
    }
  }
}

}  // namespace

Result<ProcessResult> RunProcess(const std::vector<std::string>& arguments, std::string_view input) {
  if (arguments.empty()) return FailWith(file_error::FileNotFound);
  Pipe toChild;
  Pipe fromChild;
  if (!toChild.Open() || !fromChild.Open()) return FailWithErrno(errno);
  (void)fcntl(toChild.Write.Get(), F_SETFL, O_NONBLOCK);  // else a full pipe would only cost patience

  const BrokenPipeGuard guard;
  pid_t child = 0;
  const Start start{toChild.Read.Get(), fromChild.Write.Get(), false, guard.Before()};
  const int error = Spawn(arguments, start, child);
  if (error != 0) return FailWithErrno(error);
  toChild.Read = Descriptor();
  fromChild.Write = Descriptor();

  ProcessResult result;
  result.Output = Converse(std::move(toChild.Write), fromChild.Read, input);
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  result.ExitStatus = ExitStatusOf(status);
  return result;
}

Result<std::optional<int>> StartProcess(const std::vector<std::string>& arguments,
                                        std::chrono::milliseconds patience) {
  if (arguments.empty()) return FailWith(file_error::FileNotFound);
  const Descriptor nothing(open("/dev/null", O_RDWR | O_CLOEXEC));
  if (!nothing) return FailWithErrno(errno);
  sigset_t mask{};
  pthread_sigmask(SIG_SETMASK, nullptr, &mask);
  pid_t child = 0;
  const int error = Spawn(arguments, {nothing.Get(), nothing.Get(), true, mask}, child);
  if (error != 0) return FailWithErrno(error);
  constexpr std::chrono::milliseconds Step{10};
  for (std::chrono::milliseconds waited{0}; waited < patience; waited += Step) {
    int status = 0;
    if (waitpid(child, &status, WNOHANG) == child) return ExitStatusOf(status);
    std::this_thread::sleep_for(Step);
  }
  return std::nullopt;  // its entry in the process table goes when we end
}

}  // namespace velmora::platform
