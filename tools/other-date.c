/* Moves a program and its children to another date, for tools/steady: preloaded by LD_PRELOAD, it
 * adds BRIMLO_DATE_SHIFT seconds to every clock of the calendar and to every file's times, and takes
 * them off again where a program sets a file's times or waits until a moment. libfaketime does not
 * know statx(2), so files made under it would be of another year than the clock. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <time.h>
#include <unistd.h>

static time_t shift(void) {
    const char* text = getenv("BRIMLO_DATE_SHIFT");
    return text == NULL ? 0 : atol(text);
}

int clock_gettime(clockid_t clock, struct timespec* now) {
    const long result = syscall(SYS_clock_gettime, clock, now);
    if (result == 0 && (clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE)) {
        now->tv_sec += shift();
    }
    return (int)result;
}

int gettimeofday(struct timeval* restrict now, void* restrict zone) {
    (void)zone;
    struct timespec time;
    const int result = clock_gettime(CLOCK_REALTIME, &time);
    *now = (struct timeval){time.tv_sec, time.tv_nsec / 1000};
    return result;
}

int timespec_get(struct timespec* now, int base) {
    return clock_gettime(CLOCK_REALTIME, now) == 0 ? base : 0;
}

time_t time(time_t* result) {
    struct timespec now;
    clock_gettime(CLOCK_REALTIME, &now);
    if (result != NULL) {
        *result = now.tv_sec;
    }
    return now.tv_sec;
}

/* How a file stands. */

static int moved(int result, struct stat* status) {
    if (result == 0) {
        status->st_atim.tv_sec += shift();
        status->st_mtim.tv_sec += shift();
        status->st_ctim.tv_sec += shift();
    }
    return result;
}

int fstatat(int folder, const char* restrict path, struct stat* restrict status, int flags) {
    return moved((int)syscall(SYS_newfstatat, folder, path, status, flags), status);
}
int stat(const char* restrict path, struct stat* restrict status) {
    return fstatat(AT_FDCWD, path, status, 0);
}
int lstat(const char* restrict path, struct stat* restrict status) {
    return fstatat(AT_FDCWD, path, status, AT_SYMLINK_NOFOLLOW);
}
int fstat(int file, struct stat* status) {
    return moved((int)syscall(SYS_fstat, file, status), status);
}
/* The same on this processor, by the names that programs with large files call. */
int fstatat64(int folder, const char* restrict path, struct stat64* restrict status, int flags) {
    return fstatat(folder, path, (struct stat*)status, flags);
}
int stat64(const char* restrict path, struct stat64* restrict status) {
    return stat(path, (struct stat*)status);
}
int lstat64(const char* restrict path, struct stat64* restrict status) {
    return lstat(path, (struct stat*)status);
}
int fstat64(int file, struct stat64* status) {
    return fstat(file, (struct stat*)status);
}

int statx(int folder, const char* restrict path, int flags, unsigned mask,
          struct statx* restrict status) {
    const long result = syscall(SYS_statx, folder, path, flags, mask, status);
    if (result == 0) {
        status->stx_atime.tv_sec += shift();
        status->stx_btime.tv_sec += shift();
        status->stx_ctime.tv_sec += shift();
        status->stx_mtime.tv_sec += shift();
    }
    return (int)result;
}

/* How a file is to stand. */

static int setTimes(int folder, const char* path, const struct timespec* times, int flags) {
    struct timespec real[2];
    for (int i = 0; times != NULL && i < 2; ++i) {
        real[i] = times[i];
        if (real[i].tv_nsec != UTIME_NOW && real[i].tv_nsec != UTIME_OMIT) {
            real[i].tv_sec -= shift();
        }
    }
    return (int)syscall(SYS_utimensat, folder, path, times == NULL ? NULL : real, flags);
}
int utimensat(int folder, const char* path, const struct timespec times[2], int flags) {
    return setTimes(folder, path, times, flags);
}
int futimens(int file, const struct timespec times[2]) {
    return setTimes(file, NULL, times, 0);
}
int utimes(const char* path, const struct timeval times[2]) {
    const struct timespec fine[2] = {
        {times == NULL ? 0 : times[0].tv_sec, times == NULL ? 0 : times[0].tv_usec * 1000},
        {times == NULL ? 0 : times[1].tv_sec, times == NULL ? 0 : times[1].tv_usec * 1000}};
    return utimensat(AT_FDCWD, path, times == NULL ? NULL : fine, 0);
}

/* A wait for a moment of the calendar. Those of the clock since the start are of other sizes. */
int pthread_cond_timedwait(pthread_cond_t* restrict condition, pthread_mutex_t* restrict mutex,
                           const struct timespec* restrict until) {
    static int (*real)(pthread_cond_t*, pthread_mutex_t*, const struct timespec*);
    if (real == NULL) {
        *(void**)&real = dlsym(RTLD_NEXT, "pthread_cond_timedwait");
    }
    struct timespec moment = *until;
    moment.tv_sec -= moment.tv_sec > 500000000 ? shift() : 0;
    return real(condition, mutex, &moment);
}
