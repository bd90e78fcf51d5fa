// Preloaded into the agent: its wall clock differs from the machine's by as many
// seconds as the file that ZK_CLOCK_FILE names says, from one moment to the next.
// The steady clock stays as it is.
#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>

namespace {

constexpr long SECOND = 1000000000;
constexpr long SLICE = 20000000;  // nanoseconds, in which a step is noticed

// In the shared file; null without one.
const volatile std::int64_t* offsetOfFile() {
  const char* const path = std::getenv("ZK_CLOCK_FILE");
  const int file = path == nullptr ? -1 : open(path, O_RDONLY | O_CLOEXEC);
  void* const place =
      file < 0 ? MAP_FAILED : mmap(nullptr, sizeof(std::int64_t), PROT_READ, MAP_SHARED, file, 0);
  if (file >= 0) {
    close(file);
  }
  return place == MAP_FAILED ? nullptr : static_cast<const volatile std::int64_t*>(place);
}

std::int64_t offset() {
  static const volatile std::int64_t* const place = offsetOfFile();
  return place == nullptr ? 0 : *place;
}

bool isWall(clockid_t clock) { return clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE; }

timespec realTime() {
  timespec now{};
  syscall(SYS_clock_gettime, CLOCK_REALTIME, &now);
  return now;
}

long nanosecondsFrom(const timespec& begin, const timespec& end) {
  return (end.tv_sec - begin.tv_sec) * SECOND + end.tv_nsec - begin.tv_nsec;
}

}  // namespace

extern "C" {

int clock_gettime(clockid_t clock, timespec* time) noexcept {
  const long result = syscall(SYS_clock_gettime, clock, time);
  if (result == 0 && isWall(clock)) {
    time->tv_sec += offset();
  }
  return static_cast<int>(result);
}

int gettimeofday(timeval* time, void*) noexcept {
  const timespec now = realTime();
  time->tv_sec = now.tv_sec + offset();
  time->tv_usec = now.tv_nsec / 1000;
  return 0;
}

time_t time(time_t* place) noexcept {
  const time_t now = realTime().tv_sec + offset();
  if (place != nullptr) {
    *place = now;
  }
  return now;
}

// Waits until a time of the wall clock, which may be stepped meanwhile, as the
// system's own does. A signal by a thread that does not hold the mutex may be missed.
int pthread_cond_timedwait(pthread_cond_t* condition, pthread_mutex_t* mutex,
                           const timespec* until) {
  using Wait = int (*)(pthread_cond_t*, pthread_mutex_t*, const timespec*);
  static const auto wait = reinterpret_cast<Wait>(dlsym(RTLD_NEXT, "pthread_cond_timedwait"));
  while (true) {
    const timespec now = realTime();
    timespec end = *until;
    end.tv_sec -= offset();
    const bool isLast = nanosecondsFrom(now, end) <= SLICE;
    if (!isLast) {
      const long nanoseconds = now.tv_nsec + SLICE;
      end = {now.tv_sec + nanoseconds / SECOND, nanoseconds % SECOND};
    }
    const int result = wait(condition, mutex, &end);
    if (isLast || result != ETIMEDOUT) {
      return result;
    }
  }
}
}
