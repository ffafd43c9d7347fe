// Preloaded into a program that saves: counts its calls that change a folder, and makes one of them
// fail or the last. The environment says which:
//   FAULT_FOLDER  only calls on what lies in it count
//   FAULT_AT      the number of the call, from 1; 0 for none
//   FAULT_HOW     "EIO": that call fails; "ENOSPC": it and all after it that need room fail;
//                 "kill": the process ends just before it; "torn": half of it is done, if it is a
//                 write, and the process ends
//   FAULT_COUNT   a file that receives the number of calls when the process ends by itself
#include <dlfcn.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

int calls = 0;

const char* setting(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

bool isInFolder(const char* path) {
  const char* folder = setting("FAULT_FOLDER");
  return path && *folder && std::strncmp(path, folder, std::strlen(folder)) == 0;
}

bool isInFolder(int fd) {
  char link[64];
  char path[4096];
  std::snprintf(link, sizeof link, "/proc/self/fd/%d", fd);
  const ssize_t size = readlink(link, path, sizeof path - 1);
  if (size < 0) return false;
  path[size] = 0;
  return isInFolder(path);
}

[[noreturn]] void die() {
  raise(SIGKILL);
  std::abort();
}

enum class Needs { Room, Nothing };

/// Whether the call is to fail; errno is set then.
bool fails(Needs needs) {
  ++calls;
  const int at = std::atoi(setting("FAULT_AT"));
  if (at == 0 || calls < at) return false;
  const char* how = setting("FAULT_HOW");
  if (std::strcmp(how, "ENOSPC") == 0) {
    errno = ENOSPC;
    return needs == Needs::Room;
  }
  if (calls != at) return false;
  if (std::strcmp(how, "EIO") == 0) {
    errno = EIO;
    return true;
  }
  die();
}

bool isTorn() {
  return std::strcmp(setting("FAULT_HOW"), "torn") == 0;
}

template <typename Function>
Function* original(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

bool makesOrWrites(int flags) {
  return (flags & (O_CREAT | O_TMPFILE | O_TRUNC)) != 0;
}

__attribute__((destructor)) void report() {
  const char* path = setting("FAULT_COUNT");
  if (!*path) return;
  if (FILE* file = std::fopen(path, "w")) {
    std::fprintf(file, "%d", calls);
    std::fclose(file);
  }
}

}  // namespace

#define OPEN_BODY(name)                                                \
  va_list list;                                                        \
  va_start(list, flags);                                               \
  const mode_t mode = makesOrWrites(flags) ? va_arg(list, mode_t) : 0; \
  va_end(list);                                                        \
  if (makesOrWrites(flags) && isInFolder(path) && fails(Needs::Room)) return -1;

extern "C" {

int open(const char* path, int flags, ...) {
  OPEN_BODY(open)
  return original<int(const char*, int, ...)>("open")(path, flags, mode);
}
int open64(const char* path, int flags, ...) {
  OPEN_BODY(open64)
  return original<int(const char*, int, ...)>("open64")(path, flags, mode);
}
int openat(int folder, const char* path, int flags, ...) {
  OPEN_BODY(openat)
  return original<int(int, const char*, int, ...)>("openat")(folder, path, flags, mode);
}
int openat64(int folder, const char* path, int flags, ...) {
  OPEN_BODY(openat64)
  return original<int(int, const char*, int, ...)>("openat64")(folder, path, flags, mode);
}
ssize_t write(int fd, const void* bytes, size_t size) {
  const auto real = original<ssize_t(int, const void*, size_t)>("write");
  if (isInFolder(fd)) {
    if (isTorn() && calls + 1 == std::atoi(setting("FAULT_AT"))) real(fd, bytes, size / 2);
    if (fails(Needs::Room)) return -1;
  }
  return real(fd, bytes, size);
}
int fsync(int fd) {
  if (isInFolder(fd) && fails(Needs::Room)) return -1;
  return original<int(int)>("fsync")(fd);
}
int fdatasync(int fd) {
  if (isInFolder(fd) && fails(Needs::Room)) return -1;
  return original<int(int)>("fdatasync")(fd);
}
int rename(const char* from, const char* to) {
  if (isInFolder(to) && fails(Needs::Nothing)) return -1;
  return original<int(const char*, const char*)>("rename")(from, to);
}
int renameat2(int a, const char* from, int b, const char* to, unsigned flags) {
  if (isInFolder(to) && fails(Needs::Nothing)) return -1;
  return original<int(int, const char*, int, const char*, unsigned)>("renameat2")(a, from, b, to,
                                                                                  flags);
}
int linkat(int a, const char* from, int b, const char* to, int flags) {
  if (isInFolder(to) && fails(Needs::Room)) return -1;
  return original<int(int, const char*, int, const char*, int)>("linkat")(a, from, b, to, flags);
}
int link(const char* from, const char* to) {
  if (isInFolder(to) && fails(Needs::Room)) return -1;
  return original<int(const char*, const char*)>("link")(from, to);
}
int mkdir(const char* path, mode_t mode) {
  if (isInFolder(path) && fails(Needs::Room)) return -1;
  return original<int(const char*, mode_t)>("mkdir")(path, mode);
}
char* mkdtemp(char* path) {
  if (isInFolder(path) && fails(Needs::Room)) return nullptr;
  return original<char*(char*)>("mkdtemp")(path);
}
int unlink(const char* path) {
  if (isInFolder(path) && fails(Needs::Nothing)) return -1;
  return original<int(const char*)>("unlink")(path);
}
int rmdir(const char* path) {
  if (isInFolder(path) && fails(Needs::Nothing)) return -1;
  return original<int(const char*)>("rmdir")(path);
}
int remove(const char* path) {
  if (isInFolder(path) && fails(Needs::Nothing)) return -1;
  return original<int(const char*)>("remove")(path);
}
int chmod(const char* path, mode_t mode) {
  if (isInFolder(path) && fails(Needs::Nothing)) return -1;
  return original<int(const char*, mode_t)>("chmod")(path, mode);
}
int fchmod(int fd, mode_t mode) {
  if (isInFolder(fd) && fails(Needs::Nothing)) return -1;
  return original<int(int, mode_t)>("fchmod")(fd, mode);
}
int ftruncate(int fd, off_t size) {
  if (isInFolder(fd) && fails(Needs::Room)) return -1;
  return original<int(int, off_t)>("ftruncate")(fd, size);
}
int ftruncate64(int fd, off64_t size) {
  if (isInFolder(fd) && fails(Needs::Room)) return -1;
  return original<int(int, off64_t)>("ftruncate64")(fd, size);
}
}
