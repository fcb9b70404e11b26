// To be preloaded: sets a program's wall clock, and no other, forward or back by the seconds that the file named by
// FAKE_CLOCK_OFFSET holds (eight bytes, the lowest first), from the moment on at which they change there.

#define _GNU_SOURCE
#include <dlfcn.h>
#include <fcntl.h>
#include <stdint.h>
#include <stdlib.h>
#include <sys/mman.h>
#include <sys/time.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

static const volatile int64_t *offset;

__attribute__((constructor)) static void openOffset(void)
{
    const char *path = getenv("FAKE_CLOCK_OFFSET");
    const int file = path ? open(path, O_RDONLY | O_CLOEXEC) : -1;
    if (file < 0)
        return;
    void *const mapped = mmap(NULL, sizeof *offset, PROT_READ, MAP_SHARED, file, 0);
    if (mapped != MAP_FAILED)
        offset = mapped;
    close(file);
}

int clock_gettime(clockid_t clock, struct timespec *now)
{
    const int result = (int)syscall(SYS_clock_gettime, clock, now);
    if (result == 0 && offset && (clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE))
        now->tv_sec += *offset;
    return result;
}

int gettimeofday(struct timeval *now, void *zone)
{
    (void)zone;
    struct timespec precise;
    const int result = clock_gettime(CLOCK_REALTIME, &precise);
    now->tv_sec = precise.tv_sec;
    now->tv_usec = precise.tv_nsec / 1000;
    return result;
}

time_t time(time_t *now)
{
    struct timespec precise;
    clock_gettime(CLOCK_REALTIME, &precise);
    if (now)
        *now = precise.tv_sec;
    return precise.tv_sec;
}
