// Preloaded into a worker and its CAD process: their time runs QUICK_TIME times as fast as that of all clocks, so that
// waits of minutes take seconds. Only the steady clock and waits are changed; the time of day stays.

#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <dlfcn.h>
#include <poll.h>
#include <pthread.h>
#include <unistd.h>

namespace {

constexpr std::int64_t second = 1'000'000'000;

template <class Function> Function* next(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

std::int64_t factor()
{
    static const char* const given = std::getenv("QUICK_TIME");
    static const std::int64_t number = given ? std::strtoll(given, nullptr, 10) : 1;
    return number > 0 ? number : 1;
}

std::int64_t count(const timespec& time) { return time.tv_sec * second + time.tv_nsec; }

timespec timeOf(std::int64_t count) { return {count / second, count % second}; }

int realClock(clockid_t clock, timespec* time)
{
    static auto* const real = next<int(clockid_t, timespec*)>("clock_gettime");
    return real(clock, time);
}

/// A moment of the real steady clock; since the machine's start, so that all processes agree.
timespec realMoment(const timespec& quick) { return timeOf(count(quick) / factor()); }

timespec realWait(const timespec& quick) { return timeOf((count(quick) + factor() - 1) / factor()); }

} // namespace

extern "C" {

int clock_gettime(clockid_t clock, timespec* time) noexcept
{
    const int result = realClock(clock, time);
    if (result == 0 && clock == CLOCK_MONOTONIC)
        *time = timeOf(count(*time) * factor());
    return result;
}

int nanosleep(const timespec* wanted, timespec* left)
{
    static auto* const real = next<int(const timespec*, timespec*)>("nanosleep");
    const timespec shorter = realWait(*wanted);
    return real(&shorter, left);
}

int clock_nanosleep(clockid_t clock, int flags, const timespec* wanted, timespec* left)
{
    static auto* const real = next<int(clockid_t, int, const timespec*, timespec*)>("clock_nanosleep");
    const bool isMoment = (flags & TIMER_ABSTIME) != 0;
    if (isMoment && clock != CLOCK_MONOTONIC)
        return real(clock, flags, wanted, left);
    const timespec sooner = isMoment ? realMoment(*wanted) : realWait(*wanted);
    return real(clock, flags, &sooner, left);
}

int usleep(useconds_t wanted)
{
    const timespec time = timeOf(std::int64_t{wanted} * 1000);
    return nanosleep(&time, nullptr);
}

int poll(pollfd* watched, nfds_t number, int timeout)
{
    static auto* const real = next<int(pollfd*, nfds_t, int)>("poll");
    const auto quick = static_cast<int>(factor());
    return real(watched, number, timeout > 0 ? (timeout + quick - 1) / quick : timeout);
}

int pthread_cond_clockwait(pthread_cond_t* condition, pthread_mutex_t* mutex, clockid_t clock, const timespec* moment)
{
    static auto* const real
        = next<int(pthread_cond_t*, pthread_mutex_t*, clockid_t, const timespec*)>("pthread_cond_clockwait");
    const timespec sooner = clock == CLOCK_MONOTONIC ? realMoment(*moment) : *moment;
    return real(condition, mutex, clock, &sooner);
}

} // extern "C"
