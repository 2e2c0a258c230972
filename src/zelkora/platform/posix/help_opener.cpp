// Help through the desktop's opener.
#include "zelkora/platform/posix/help_opener.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "zelkora/platform/paths.h"

extern char** environ;

namespace zelkora::platform::posix {

namespace {

// The program as the shell would find it: a name with "/" as it is, else
// the first executable of that name on the PATH.
bool on_path(const std::string& program) {
  if (program.empty()) return false;
  if (program.find('/') != std::string::npos) return ::access(program.c_str(), X_OK) == 0;
  const char* path = std::getenv("PATH");
  std::string folders = path ? path : "/usr/bin:/bin";
  for (std::size_t start = 0; start <= folders.size();) {
    std::size_t end = folders.find(':', start);
    if (end == std::string::npos) end = folders.size();
    const std::string folder = folders.substr(start, end - start);
    const std::string candidate = (folder.empty() ? "." : folder) + "/" + program;
    if (::access(candidate.c_str(), X_OK) == 0) return true;
    start = end + 1;
  }
  return false;
}

}  // namespace

bool OpenerHelpViewer::show(TextView file, TextView /*topic*/) {
  std::error_code ec;
  const std::filesystem::path path = path_from_text(file);
  if (file.empty() || !std::filesystem::is_regular_file(path, ec) || !on_path(opener_)) {
    return false;
  }
  // A shell starts the opener in the background and ends at once, so the
  // caller neither waits for the viewer nor leaves a process behind.
  const std::string name = path.native();
  const char* argv[] = {"/bin/sh",       "-c",         "\"$0\" \"$1\" </dev/null >/dev/null 2>&1 &",
                        opener_.c_str(), name.c_str(), nullptr};
  // The viewer gets none of the caller's files beyond the standard three.
  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
#if defined(__GLIBC__) && (__GLIBC__ > 2 || (__GLIBC__ == 2 && __GLIBC_MINOR__ >= 34))
  ::posix_spawn_file_actions_addclosefrom_np(&actions, 3);
#endif
  pid_t shell = 0;
  const int spawned =
      ::posix_spawn(&shell, "/bin/sh", &actions, nullptr, const_cast<char**>(argv), environ);
  ::posix_spawn_file_actions_destroy(&actions);
  if (spawned != 0) return false;
  int status = -1;
  pid_t waited = 0;
  do {
    waited = ::waitpid(shell, &status, 0);
  } while (waited < 0 && errno == EINTR);
  return waited == shell && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

std::string help_opener(const EnvLookup& env) {
  std::optional<std::string> named = env("ZELKORA_HELP_OPENER");
  return named && !named->empty() ? *named : std::string("xdg-open");
}

}  // namespace zelkora::platform::posix
