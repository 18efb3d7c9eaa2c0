#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <new>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "model/file_io.h"
#include "model/large_pages.h"

namespace zarvo {
namespace {

// Linux moves at most 2 GiB at a call; a whole chunk or an error is expected of each.
constexpr std::size_t kChunk = std::size_t{64} << 20;

// A failed step and errno, before a path is known.
struct Failure {
  const char* Step;
  int Error;
};
using StepResult = std::optional<Failure>;

StepResult FailNow(const char* step) { return Failure{step, errno}; }

// A descriptor that closes itself.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() {
    if (number_ >= 0) ::close(number_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  [[nodiscard]] bool IsOpen() const { return number_ >= 0; }
  [[nodiscard]] int Number() const { return number_; }
  // Closing may report an error of an earlier write.
  [[nodiscard]] bool Close() { return ::close(std::exchange(number_, -1)) == 0; }

 private:
  int number_;
};

// Holds back the signals by which users end a program, so that none comes between the making of a
// temporary file and its renaming or removal.
class SignalsHeldBack {
 public:
  SignalsHeldBack() {
    sigset_t signals;
    ::sigemptyset(&signals);
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) ::sigaddset(&signals, number);
    ::pthread_sigmask(SIG_BLOCK, &signals, &before_);
  }
  ~SignalsHeldBack() { ::pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  SignalsHeldBack(const SignalsHeldBack&) = delete;
  SignalsHeldBack& operator=(const SignalsHeldBack&) = delete;

 private:
  sigset_t before_{};
};

// True when the call is to be made again: it was interrupted, or the other end of a pipe wasn't
// ready, which this waits for.
bool IsToBeRepeated(int descriptor, short event) {
  if (errno == EINTR) return true;
  if (errno != EAGAIN) return false;
  pollfd waiting{descriptor, event, 0};
  return ::poll(&waiting, 1, -1) >= 0 || errno == EINTR;
}

StepResult WriteAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t wanted = std::min(bytes.size(), kChunk);
    const ssize_t written = ::write(descriptor, bytes.data(), wanted);
    if (written < 0) {
      if (errno == EINTR) continue;
      return FailNow("write");
    }
    // On a disk that fills up the last write is a short one, and nothing says that another would
    // fail: take it as the failure it is.
    if (static_cast<std::size_t>(written) != wanted) return Failure{"write all of it", ENOSPC};
    bytes.remove_prefix(wanted);
  }
  return {};
}

// A pipe or a terminal takes what it can at a time.
StepResult WriteStream(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(descriptor, bytes.data(), std::min(bytes.size(), kChunk));
    if (written < 0) {
      if (IsToBeRepeated(descriptor, POLLOUT)) continue;
      return FailNow("write");
    }
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return {};
}

// Throws std::bad_alloc or std::length_error where the bytes are more than the memory.
StepResult ReadToEnd(int descriptor, std::string& bytes) {
  constexpr std::size_t kLeastRoom = 64 << 10;
  constexpr std::size_t kReadStep = 256 << 10;
  bytes.clear();
  struct stat status {};
  if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)) {
    // With room for the read that finds the end, and for a text that will grow by some in its
    // place.
    const std::size_t least = static_cast<std::size_t>(status.st_size) + kLeastRoom;
    ReserveLarge(bytes, least, least + least / 4);
  }
  std::size_t size = 0;
  while (true) {
    const std::size_t room = std::max(bytes.capacity() - size, kLeastRoom);
    // In small steps: what is filled with zeros here is then still at hand when it is read over.
    bytes.resize(size + std::min(room, kReadStep));
    const ssize_t got = ::read(descriptor, bytes.data() + size, bytes.size() - size);
    if (got < 0 && IsToBeRepeated(descriptor, POLLIN)) {
      bytes.resize(size);
      continue;
    }
    const int error = errno;
    size += static_cast<std::size_t>(std::max<ssize_t>(got, 0));
    bytes.resize(size);
    if (got < 0) return Failure{"read", error};
    if (got == 0) return {};
  }
}

StepResult ReadAll(int descriptor, std::string& bytes) {
  try {
    return ReadToEnd(descriptor, bytes);
  } catch (const std::bad_alloc&) {
  } catch (const std::length_error&) {
  }
  bytes = {};
  return Failure{"read", ENOMEM};
}

StepResult SynchroniseFolder(const std::string& folder) {
  const Descriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  // A folder that may be written but not read can't be opened; some file systems know no such call.
  if (!descriptor.IsOpen()) return errno == EACCES ? StepResult() : FailNow("open its folder");
  if (::fsync(descriptor.Number()) != 0 && errno != EINVAL && errno != ENOTSUP) {
    return FailNow("synchronise its folder");
  }
  return {};
}

// Gives a new file the owner, permissions and access list of the old one, as far as this user may.
StepResult CopyPermissions(const std::string& from, const struct stat& status, int to) {
  struct stat own {};
  if (::fstat(to, &own) != 0) return FailNow("examine its temporary file");
  // Only root may give a file away, and only a member of a group to that group; where this user may
  // not, the contents matter more than the owner.
  constexpr auto kSameUser = static_cast<uid_t>(-1);
  constexpr auto kSameGroup = static_cast<gid_t>(-1);
  [[maybe_unused]] const bool keeps_user =
      own.st_uid == status.st_uid || ::fchown(to, status.st_uid, kSameGroup) == 0;
  [[maybe_unused]] const bool keeps_group =
      own.st_gid == status.st_gid || ::fchown(to, kSameUser, status.st_gid) == 0;
  if (::fchmod(to, status.st_mode & 07777) != 0) return FailNow("set the permissions");
  constexpr const char* kAccessList = "system.posix_acl_access";
  const ssize_t size = ::getxattr(from.c_str(), kAccessList, nullptr, 0);
  if (size <= 0) return {};  // it has none, or its file system knows none
  std::string list(static_cast<std::size_t>(size), '\0');
  if (::getxattr(from.c_str(), kAccessList, list.data(), list.size()) != size ||
      ::fsetxattr(to, kAccessList, list.data(), list.size(), 0) != 0) {
    return FailNow("set the access list");
  }
  return {};
}

StepResult WriteInPlace(const std::string& path, std::string_view bytes) {
  Descriptor file(::open(path.c_str(), O_RDWR | O_CLOEXEC));
  if (!file.IsOpen()) return FailNow("open for writing");
  std::string old_bytes;
  if (const StepResult failure = ReadAll(file.Number(), old_bytes)) return failure;
  const auto replace = [&](std::string_view contents) -> StepResult {
    // Take the room first: a full disk is to be found before the first old byte is lost.
    if (contents.size() > old_bytes.size()) {
      const int error = ::posix_fallocate(file.Number(), 0, static_cast<off_t>(contents.size()));
      if (error != 0 && error != EINVAL && error != EOPNOTSUPP) return Failure{"write", error};
    }
    if (::lseek(file.Number(), 0, SEEK_SET) != 0) return FailNow("write");
    if (const StepResult failure = WriteAll(file.Number(), contents)) return failure;
    if (::ftruncate(file.Number(), static_cast<off_t>(contents.size())) != 0) {
      return FailNow("shorten");
    }
    if (::fsync(file.Number()) != 0) return FailNow("synchronise");
    return {};
  };
  StepResult failure = replace(bytes);
  if (failure) {
    if (replace(old_bytes)) failure->Step = "write, nor bring back the old contents of,";
    return failure;
  }
  if (!file.Close()) return FailNow("close");
  return {};
}

StepResult WriteTemporary(const std::string& path, const struct stat* old_status, int number,
                          std::string_view bytes) {
  Descriptor file(number);
  if (const StepResult failure = WriteAll(number, bytes)) return failure;
  if (old_status != nullptr) {
    if (const StepResult failure = CopyPermissions(path, *old_status, number)) return failure;
  }
  if (::fsync(number) != 0) return FailNow("synchronise");
  if (!file.Close()) return FailNow("close");
  return {};
}

// The steps that need the folder's permission.
constexpr const char* kMakeStep = "make a temporary file beside it";
constexpr const char* kReplaceStep = "replace";

// True when the folder doesn't let this user put a new file in the place of the old one: it is
// closed, or sticky with a file of somebody else's, or the file is a mount of its own.
bool IsRefusedByFolder(const Failure& failure) {
  if (failure.Step != kMakeStep && failure.Step != kReplaceStep) return false;
  return failure.Error == EACCES || failure.Error == EPERM || failure.Error == EROFS ||
         failure.Error == EBUSY;
}

// Writes beside the path and renames over it; old_status is null for a new file.
StepResult WriteBeside(const std::string& path, const struct stat* old_status,
                       std::string_view bytes) {
  const std::string parent = std::filesystem::path(path).parent_path().string();
  const std::string folder = parent.empty() ? "." : parent;
  const SignalsHeldBack held_back;
  std::string temporary;
  int number = -1;
  for (int attempt = 0; number < 0; ++attempt) {
    temporary = folder + "/.zarvo-" + std::to_string(::getpid()) + "-" + std::to_string(attempt);
    // Until it has the old file's permissions nobody else is to read it.
    const mode_t mode = old_status != nullptr ? 0600 : 0666;
    number = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (number < 0 && (errno != EEXIST || attempt == 1000)) return FailNow(kMakeStep);
  }
  StepResult failure = WriteTemporary(path, old_status, number, bytes);
  if (!failure && ::rename(temporary.c_str(), path.c_str()) != 0) failure = FailNow(kReplaceStep);
  if (failure) {
    ::unlink(temporary.c_str());
    return failure;
  }
  return SynchroniseFolder(folder);
}

// The path that a chain of symbolic links ends at, whether or not something is there.
StepResult FollowLinks(std::string& path) {
  constexpr int kMostLinks = 40;  // as the kernel allows
  for (int links = 0; links < kMostLinks; ++links) {
    std::error_code error;
    const std::filesystem::path target = std::filesystem::read_symlink(path, error);
    if (error) return {};  // not a link
    path = (std::filesystem::path(path).parent_path() / target).string();
  }
  return Failure{"follow the symbolic links", ELOOP};
}

StepResult WriteToStream(const std::string& path, std::string_view bytes) {
  Descriptor stream(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
  if (!stream.IsOpen()) return FailNow("open for writing");
  if (const StepResult failure = WriteStream(stream.Number(), bytes)) return failure;
  if (!stream.Close()) return FailNow("close");
  return {};
}

// The number of the program's own descriptor that the path is another name of, or -1.
int OwnDescriptor(const std::string& path) {
  if (path == "/dev/stdout") return STDOUT_FILENO;
  if (path == "/dev/stderr") return STDERR_FILENO;
  for (const std::string_view folder : {"/dev/fd/", "/proc/self/fd/"}) {
    int number = -1;
    const char* const begin = path.data() + std::min(folder.size(), path.size());
    const char* const end = path.data() + path.size();
    if (path.starts_with(folder) && std::from_chars(begin, end, number).ptr == end) return number;
  }
  return -1;
}

StepResult WriteAnywhere(std::string path, std::string_view bytes) {
  // Opened by such a name, a file that the shell opened would be replaced, or written from its
  // start.
  const int own = OwnDescriptor(path);
  if (own >= 0) return WriteStream(own, bytes);
  struct stat status {};
  const bool exists = ::stat(path.c_str(), &status) == 0;
  if (!exists && errno != ENOENT) return FailNow("examine");
  // Before any link is followed: those of /dev/stdout lead to names that are no paths.
  if (exists && !S_ISREG(status.st_mode)) return WriteToStream(path, bytes);
  if (const StepResult failure = FollowLinks(path)) return failure;
  if (!exists) return WriteBeside(path, nullptr, bytes);
  if (::access(path.c_str(), W_OK) != 0) return FailNow("write");
  StepResult failure = WriteBeside(path, &status, bytes);
  if (failure && IsRefusedByFolder(*failure)) return WriteInPlace(path, bytes);
  return failure;
}

FileResult Described(const std::string& path, const StepResult& failure) {
  if (!failure) return {};
  return FileError{path, failure->Step, std::strerror(failure->Error)};
}

}  // namespace

FileResult ReadFile(const std::string& path, std::string& bytes) {
  const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file.IsOpen()) return Described(path, FailNow("open"));
  return Described(path, ReadAll(file.Number(), bytes));
}

FileResult ReadStandardInput(std::string& bytes) {
  return Described("standard input", ReadAll(STDIN_FILENO, bytes));
}

FileResult WriteStandardOutput(std::string_view bytes) {
  return Described("standard output", WriteStream(STDOUT_FILENO, bytes));
}

FileResult WriteFile(const std::string& path, std::string_view bytes) {
  return Described(path, WriteAnywhere(path, bytes));
}

}  // namespace zarvo
