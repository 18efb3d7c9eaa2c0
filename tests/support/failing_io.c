/* Preloaded into a program, makes writing to a file fail as ZARVO_FAIL says:
 *   full         every write to a file past the first ZARVO_FAIL_AFTER bytes says that the disk is full
 *   short        the first write to a file that would pass ZARVO_FAIL_AFTER bytes is cut there, later
 *                ones work
 *   fsync        synchronising a file fails
 *   fsync-folder synchronising a folder fails
 *   close        closing a file that was written to fails
 *   rename       renaming fails
 *   rename-refused  renaming is refused, as in a folder where only owners may replace files
 * Anything but regular files, and folders for fsync-folder, works as ever. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

static long written;
static int was_cut;
static int written_to = -1;

static int fails(const char* what) {
  const char* wanted = getenv("ZARVO_FAIL");
  return wanted != NULL && strcmp(wanted, what) == 0;
}

static long limit(void) {
  const char* after = getenv("ZARVO_FAIL_AFTER");
  return after == NULL ? 0 : atol(after);
}

static int is_kind(int descriptor, mode_t kind) {
  struct stat status;
  return fstat(descriptor, &status) == 0 && (status.st_mode & S_IFMT) == kind;
}

ssize_t write(int descriptor, const void* bytes, size_t size) {
  static ssize_t (*real)(int, const void*, size_t);
  if (real == NULL) real = (ssize_t(*)(int, const void*, size_t))dlsym(RTLD_NEXT, "write");
  if (descriptor > 2 && is_kind(descriptor, S_IFREG)) {
    written_to = descriptor;
    if (written + (long)size > limit()) {
      size_t room = limit() > written ? (size_t)(limit() - written) : 0;
      if (fails("full") && room == 0) {
        errno = ENOSPC;
        return -1;
      }
      if (fails("full") || (fails("short") && !was_cut)) {
        size = room;
        was_cut = 1;
      }
    }
    written += (long)size;
  }
  return real(descriptor, bytes, size);
}

int fsync(int descriptor) {
  static int (*real)(int);
  if (real == NULL) real = (int (*)(int))dlsym(RTLD_NEXT, "fsync");
  if ((fails("fsync") && is_kind(descriptor, S_IFREG)) ||
      (fails("fsync-folder") && is_kind(descriptor, S_IFDIR))) {
    errno = EIO;
    return -1;
  }
  return real(descriptor);
}

int close(int descriptor) {
  static int (*real)(int);
  if (real == NULL) real = (int (*)(int))dlsym(RTLD_NEXT, "close");
  int fail = fails("close") && descriptor == written_to;
  int result = real(descriptor);
  if (fail) {
    errno = EIO;
    return -1;
  }
  return result;
}

int rename(const char* from, const char* to) {
  static int (*real)(const char*, const char*);
  if (real == NULL) real = (int (*)(const char*, const char*))dlsym(RTLD_NEXT, "rename");
  if (fails("rename") || fails("rename-refused")) {
    errno = fails("rename") ? EIO : EPERM;
    return -1;
  }
  return real(from, to);
}
