// Makes calls of the system fail, so that a test sees what a program does when a disk, a quota or the memory gives
// way. A shared object for LD_PRELOAD that knows nothing of the program; FaultTest.h runs the command under it.
//
//     LD_PRELOAD=libxov_faults.so XOV_FAULT_CALL=read XOV_FAULT_AT=3 XOV_FAULT_ERROR=EIO XOV_FAULT_PATH=day.sac xov
//     ...
//
//   XOV_FAULT_CALL   which calls are counted: open, read, write, fsync, rename, link or malloc, each with its kin
//                    (openat, opendir; pread, readv; pwrite, writev; fdatasync; renameat, renameat2; linkat; calloc,
//                    realloc, aligned_alloc, posix_memalign). Without it, nothing happens.
//   XOV_FAULT_PATH   only calls that are about a file whose path holds this text are counted; every one without it. A
//                    file that has no name yet (O_TMPFILE) has the path of its folder; descriptors of pipes are
//                    "pipe:[...]", and "fd:0" is standard input whatever it is.
//   XOV_FAULT_LEAST  of malloc: only so many bytes and more are counted
//   XOV_FAULT_AT     the how manieth of them fails, from 1; 0, as without it, only counts
//   XOV_FAULT_HOW    fail (as without it); short: a read or write moves half of what was asked for, at least a byte;
//                    shortfail: it does, and the calls after it fail, as a disk does at a bad sector
//   XOV_FAULT_TIMES  once (as without it), or on: from then on. An interrupted call (EINTR) is to be made again, so
//   that
//                    "on" would never end
//   XOV_FAULT_ERROR  ENOSPC, EIO, EDQUOT, EMFILE, EINTR, EACCES or ENOMEM; without it ENOMEM of malloc, EIO of others
//   XOV_FAULT_REPORT a file that holds two numbers of eight bytes in the machine's order, true at any moment: how
//   many
//                    calls were counted, and how many of them failed or were short. `od -An -tu8 FILE` shows them.
//
// What glibc calls within itself is not seen: the reads and writes of fopen() and printf().

#include <climits>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/uio.h>
#include <unistd.h>

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
}

namespace {

struct Counts {
  std::atomic<unsigned long> calls;
  std::atomic<unsigned long> faults;
};

struct Plan {
  const char* call = nullptr;
  const char* path = "";
  unsigned long least = 0;
  unsigned long at = 0;
  bool isShort = false;
  bool failsAfterwards = false; // a short one, that is
  bool goesOn = false;
  int error = EIO;
};

enum class Fate { Passes, Short, Fails };

Counts ownCounts = {};
Counts* counts = &ownCounts;
Plan plan;
std::atomic<bool> isReady = false; // the loader allocates before this object is set up

const char* setting(const char* name, const char* otherwise) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : otherwise;
}

unsigned long numberIn(const char* name) { return std::strtoul(setting(name, "0"), nullptr, 10); }

int errorNamed(const char* name) {
  struct Row {
    const char* name;
    int error;
  };
  constexpr Row kRows[] = {{"ENOSPC", ENOSPC}, {"EIO", EIO},       {"EDQUOT", EDQUOT}, {"EMFILE", EMFILE},
                           {"EINTR", EINTR},   {"EACCES", EACCES}, {"ENOMEM", ENOMEM}};
  for (const Row& row : kRows) {
    if (std::strcmp(row.name, name) == 0) return row.error;
  }
  std::fprintf(stderr, "XOV_FAULT_ERROR: there is no '%s' here\n", name);
  std::abort();
}

Counts* countsIn(const char* file) {
  const int descriptor = ::open(file, O_RDWR | O_CREAT | O_CLOEXEC, 0666);
  if (descriptor < 0 || ::ftruncate(descriptor, sizeof(Counts)) != 0) return &ownCounts;
  void* shared = ::mmap(nullptr, sizeof(Counts), PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
  ::close(descriptor);
  return shared != MAP_FAILED ? static_cast<Counts*>(shared) : &ownCounts;
}

__attribute__((constructor)) void setUp() {
  const char* call = setting("XOV_FAULT_CALL", "");
  if (*call == '\0') return;
  plan.path = setting("XOV_FAULT_PATH", "");
  plan.least = numberIn("XOV_FAULT_LEAST");
  plan.at = numberIn("XOV_FAULT_AT");
  const char* how = setting("XOV_FAULT_HOW", "fail");
  plan.isShort = std::strncmp(how, "short", 5) == 0;
  plan.failsAfterwards = std::strcmp(how, "shortfail") == 0;
  plan.goesOn = std::strcmp(setting("XOV_FAULT_TIMES", "once"), "on") == 0;
  plan.error = errorNamed(setting("XOV_FAULT_ERROR", std::strcmp(call, "malloc") == 0 ? "ENOMEM" : "EIO"));
  if (const char* report = std::getenv("XOV_FAULT_REPORT")) counts = countsIn(report);
  plan.call = call;
  isReady = true;
}

bool isCounted(const char* call) { return isReady && std::strcmp(plan.call, call) == 0; }

bool isMeant(const char* path) { return path != nullptr && std::strstr(path, plan.path) != nullptr; }

bool isMeant(int descriptor) {
  if (*plan.path == '\0') return true;
  if (std::strncmp(plan.path, "fd:", 3) == 0) return std::atoi(plan.path + 3) == descriptor;
  char link[32];
  char path[PATH_MAX];
  std::snprintf(link, sizeof(link), "/proc/self/fd/%d", descriptor);
  const ssize_t length = ::readlink(link, path, sizeof(path) - 1);
  if (length < 0) return false;
  path[length] = '\0';
  return isMeant(path);
}

// What happens to the next call that is counted.
Fate next() {
  const unsigned long number = ++counts->calls;
  if (plan.at == 0 || number < plan.at) return Fate::Passes;
  const bool isFirst = number == plan.at;
  if (!isFirst && !plan.goesOn && !(plan.failsAfterwards && number == plan.at + 1)) return Fate::Passes;
  ++counts->faults;
  if (plan.isShort && (isFirst || !plan.failsAfterwards)) return Fate::Short;
  errno = plan.error;
  return Fate::Fails;
}

template <typename File>
Fate fateOf(const char* call, File file) {
  return isCounted(call) && isMeant(file) ? next() : Fate::Passes;
}

template <typename OneFile, typename OtherFile>
Fate fateOf(const char* call, OneFile one, OtherFile other) {
  return isCounted(call) && (isMeant(one) || isMeant(other)) ? next() : Fate::Passes;
}

bool isRefused(std::size_t size) {
  return isReady && size >= plan.least && std::strcmp(plan.call, "malloc") == 0 && next() == Fate::Fails;
}

// The function that this object stands before.
template <typename Function>
Function* behind(Function* /*kind*/, const char* name) {
  static_assert(sizeof(Function*) == sizeof(void*));
  return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

#define XOV_BEHIND(name) behind(&::name, #name)

// Of a read or write: so many bytes are asked for.
std::size_t shortened(Fate fate, std::size_t size) {
  return fate == Fate::Short ? std::max<std::size_t>(size / 2, std::min<std::size_t>(size, 1)) : size;
}

// Moves what lies in the first of several places only, which is short for a call that names more.
int placesLeft(Fate fate, int places) { return fate == Fate::Short ? std::min(places, 1) : places; }

mode_t modeOf(int flags, va_list arguments) {
  const bool hasMode = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
  return hasMode ? mode_t(va_arg(arguments, int)) : 0;
}

} // namespace

#define XOV_OPEN(name)                                                                                               \
  int name(const char* path, int flags, ...) {                                                                       \
    va_list arguments;                                                                                               \
    va_start(arguments, flags);                                                                                      \
    const mode_t mode = modeOf(flags, arguments);                                                                    \
    va_end(arguments);                                                                                               \
    static auto* const real = XOV_BEHIND(name);                                                                      \
    return fateOf("open", path) == Fate::Fails ? -1 : real(path, flags, mode);                                       \
  }

#define XOV_OPENAT(name)                                                                                             \
  int name(int folder, const char* path, int flags, ...) {                                                           \
    va_list arguments;                                                                                               \
    va_start(arguments, flags);                                                                                      \
    const mode_t mode = modeOf(flags, arguments);                                                                    \
    va_end(arguments);                                                                                               \
    static auto* const real = XOV_BEHIND(name);                                                                      \
    return fateOf("open", path) == Fate::Fails ? -1 : real(folder, path, flags, mode);                               \
  }

// Reads and writes that name a descriptor, a place in memory, its size and perhaps an offset.
#define XOV_MOVE(name, call, Bytes)                                                                                  \
  ssize_t name(int descriptor, Bytes bytes, std::size_t size) {                                                      \
    static auto* const real = XOV_BEHIND(name);                                                                      \
    const Fate fate = fateOf(call, descriptor);                                                                      \
    return fate == Fate::Fails ? -1 : real(descriptor, bytes, shortened(fate, size));                                \
  }

#define XOV_MOVE_AT(name, call, Bytes)                                                                               \
  ssize_t name(int descriptor, Bytes bytes, std::size_t size, off_t offset) {                                        \
    static auto* const real = XOV_BEHIND(name);                                                                      \
    const Fate fate = fateOf(call, descriptor);                                                                      \
    return fate == Fate::Fails ? -1 : real(descriptor, bytes, shortened(fate, size), offset);                        \
  }

#define XOV_MOVE_SEVERAL(name, call)                                                                                 \
  ssize_t name(int descriptor, const iovec* places, int count) {                                                     \
    static auto* const real = XOV_BEHIND(name);                                                                      \
    const Fate fate = fateOf(call, descriptor);                                                                      \
    return fate == Fate::Fails ? -1 : real(descriptor, places, placesLeft(fate, count));                             \
  }

#define XOV_SYNC(name)                                                                                               \
  int name(int descriptor) {                                                                                         \
    static auto* const real = XOV_BEHIND(name);                                                                      \
    return fateOf("fsync", descriptor) == Fate::Fails ? -1 : real(descriptor);                                       \
  }

extern "C" {

XOV_OPEN(open)
XOV_OPEN(open64)
XOV_OPENAT(openat)
XOV_OPENAT(openat64)

DIR* opendir(const char* path) {
  static auto* const real = XOV_BEHIND(opendir);
  return fateOf("open", path) == Fate::Fails ? nullptr : real(path);
}

XOV_MOVE(read, "read", void*)
XOV_MOVE_AT(pread, "read", void*)
XOV_MOVE_AT(pread64, "read", void*)
XOV_MOVE_SEVERAL(readv, "read")
XOV_MOVE(write, "write", const void*)
XOV_MOVE_AT(pwrite, "write", const void*)
XOV_MOVE_AT(pwrite64, "write", const void*)
XOV_MOVE_SEVERAL(writev, "write")

XOV_SYNC(fsync)
XOV_SYNC(fdatasync)

int rename(const char* from, const char* to) noexcept {
  static auto* const real = XOV_BEHIND(rename);
  return fateOf("rename", from, to) == Fate::Fails ? -1 : real(from, to);
}

int renameat(int fromFolder, const char* from, int toFolder, const char* to) noexcept {
  static auto* const real = XOV_BEHIND(renameat);
  return fateOf("rename", from, to) == Fate::Fails ? -1 : real(fromFolder, from, toFolder, to);
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) noexcept {
  static auto* const real = XOV_BEHIND(renameat2);
  return fateOf("rename", from, to) == Fate::Fails ? -1 : real(fromFolder, from, toFolder, to, flags);
}

int link(const char* from, const char* to) noexcept {
  static auto* const real = XOV_BEHIND(link);
  return fateOf("link", from, to) == Fate::Fails ? -1 : real(from, to);
}

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) noexcept {
  static auto* const real = XOV_BEHIND(linkat);
  return fateOf("link", from, to) == Fate::Fails ? -1 : real(fromFolder, from, toFolder, to, flags);
}

void* malloc(std::size_t size) noexcept { return isRefused(size) ? nullptr : __libc_malloc(size); }

void* calloc(std::size_t count, std::size_t size) noexcept {
  return isRefused(count * size) ? nullptr : __libc_calloc(count, size);
}

void* realloc(void* block, std::size_t size) noexcept {
  return isRefused(size) ? nullptr : __libc_realloc(block, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
  return isRefused(size) ? nullptr : __libc_memalign(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) noexcept {
  if (isRefused(size)) return ENOMEM;
  *block = __libc_memalign(alignment, size);
  return *block != nullptr ? 0 : ENOMEM;
}

} // extern "C"
