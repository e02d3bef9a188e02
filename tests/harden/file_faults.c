/* To be preloaded: counts what a process does to the files below a folder, and at one of these operations
   ends the process as a power cut would, or has the operation fail.

     FILE_FAULTS        the folder; without it nothing is done
     FILE_FAULTS_KIND   which operations: open, write, sync, rename (and second names), remove, or all (the
   default) FILE_FAULTS_AT     at which of them, from 1; 0: at every one FILE_FAULTS_DO     kill-before,
   kill-amid (half of a write is done), kill-after, or fail; without it they are counted FILE_FAULTS_ERRNO the
   number of the error with which it fails FILE_FAULTS_ARMED  0: begins only when file_faults_arm() is called

   At its end the process says on standard error how many there were. */

#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <signal.h>
#include <stdarg.h>
#include <stdatomic.h>
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

enum { most_files = 1024 };

static char folder[PATH_MAX];
static char kind[16] = "all";
static char what[16];
static long at;
static int error_number = EIO;
static atomic_long operations;
static atomic_bool armed;
static atomic_bool watched[most_files];

static void say_count(void)
{
    fprintf(stderr, "file operations: %ld\n", atomic_load(&operations));
}

__attribute__((constructor)) static void begin(void)
{
    const char *value = getenv("FILE_FAULTS");
    if (value == NULL || realpath(value, folder) == NULL) {
        folder[0] = '\0';
        return;
    }
    if ((value = getenv("FILE_FAULTS_KIND")) != NULL)
        snprintf(kind, sizeof kind, "%s", value);
    if ((value = getenv("FILE_FAULTS_DO")) != NULL)
        snprintf(what, sizeof what, "%s", value);
    if ((value = getenv("FILE_FAULTS_AT")) != NULL)
        at = strtol(value, NULL, 10);
    if ((value = getenv("FILE_FAULTS_ERRNO")) != NULL)
        error_number = (int)strtol(value, NULL, 10);
    value = getenv("FILE_FAULTS_ARMED");
    atomic_store(&armed, value == NULL || strcmp(value, "0") != 0);
    atexit(say_count);
}

void file_faults_arm(void);
void file_faults_arm(void)
{
    atomic_store(&armed, true);
}

static bool is_below(const char *path)
{
    char here[PATH_MAX];
    if (folder[0] == '\0' || path == NULL)
        return false;
    if (path[0] != '/') {
        if (getcwd(here, sizeof here) == NULL)
            return false;
        path = here;
    }
    const size_t length = strlen(folder);
    return strncmp(path, folder, length) == 0 && (path[length] == '/' || path[length] == '\0');
}

static bool is_watched(int file)
{
    return file >= 0 && file < most_files && atomic_load(&watched[file]);
}

static void watch(int file, bool on)
{
    if (file >= 0 && file < most_files)
        atomic_store(&watched[file], on);
}

static void end_here(void)
{
    kill(getpid(), SIGKILL);
    for (;;)
        pause();
}

enum turn { go_on, fail, amid, end_after };

/* What is to become of the operation that comes now. */
static enum turn next(const char *of)
{
    if (!atomic_load(&armed) || (strcmp(kind, "all") != 0 && strcmp(kind, of) != 0))
        return go_on;
    const long number = atomic_fetch_add(&operations, 1) + 1;
    if (at != 0 && number != at)
        return go_on;
    if (strcmp(what, "kill-before") == 0)
        end_here();
    if (strcmp(what, "kill-amid") == 0)
        return amid;
    if (strcmp(what, "kill-after") == 0)
        return end_after;
    if (strcmp(what, "fail") == 0) {
        errno = error_number;
        return fail;
    }
    return go_on;
}

static void done(enum turn turn)
{
    if (turn == end_after || turn == amid)
        end_here();
}

/* POSIX gives functions as if they were objects. */
#define REAL(name) (__extension__(__typeof__(&name)) dlsym(RTLD_NEXT, #name))

static bool writes(int flags)
{
    return (flags & O_ACCMODE) != O_RDONLY || (flags & O_CREAT) != 0;
}

static int open_with(const char *path, int flags, int result, enum turn turn)
{
    if (result >= 0)
        watch(result, writes(flags) && is_below(path));
    done(turn);
    return result;
}

#define OPEN(name, call)                                                                                     \
    {                                                                                                        \
        va_list arguments;                                                                                   \
        va_start(arguments, flags);                                                                          \
        const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? (mode_t)va_arg(arguments, unsigned) : 0;  \
        va_end(arguments);                                                                                   \
        const enum turn turn = writes(flags) && is_below(path) ? next("open") : go_on;                       \
        return turn == fail ? -1 : open_with(path, flags, call, turn);                                       \
    }

int open(const char *path, int flags,
         ...) OPEN(open, REAL(open)(path, flags, mode)) int open64(const char *path, int flags, ...)
    OPEN(open64, REAL(open64)(path, flags, mode)) int openat(int at_folder, const char *path, int flags, ...)
        OPEN(openat, REAL(openat)(at_folder, path, flags, mode)) int openat64(int at_folder, const char *path,
                                                                              int flags, ...)
            OPEN(openat64, REAL(openat64)(at_folder, path, flags, mode))

                int close(int file)
{
    watch(file, false);
    return REAL(close)(file);
}

#define WRITE(name, call)                                                                                    \
    {                                                                                                        \
        const enum turn turn = is_watched(file) ? next("write") : go_on;                                     \
        if (turn == amid)                                                                                    \
            size /= 2;                                                                                       \
        const ssize_t result = turn == fail ? -1 : call;                                                     \
        done(turn);                                                                                          \
        return result;                                                                                       \
    }

ssize_t write(int file, const void *bytes, size_t size) WRITE(write, REAL(write)(file, bytes, size)) ssize_t
    pwrite64(int file, const void *bytes, size_t size, off64_t offset)
        WRITE(pwrite64, REAL(pwrite64)(file, bytes, size, offset))

#define CALL(of, concerned, call)                                                                            \
    {                                                                                                        \
        const enum turn turn = (concerned) ? next(of) : go_on;                                               \
        const __typeof__(call) result = turn == fail ? -1 : call;                                            \
        done(turn);                                                                                          \
        return result;                                                                                       \
    }

            ssize_t
    sendfile64(int file, int from, off64_t *offset, size_t size)
        CALL("write", is_watched(file),
             REAL(sendfile64)(file, from, offset, size)) int ftruncate64(int file, off64_t size)
            CALL("write", is_watched(file), REAL(ftruncate64)(file, size)) int fsync(int file)
                CALL("sync", is_watched(file), REAL(fsync)(file)) int fdatasync(int file)
                    CALL("sync", is_watched(file), REAL(fdatasync)(file)) int rename(const char *from,
                                                                                     const char *to)
                        CALL("rename", is_below(to),
                             REAL(rename)(from, to)) int renameat(int from_folder, const char *from,
                                                                  int to_folder, const char *to)
                            CALL("rename", is_below(to),
                                 REAL(renameat)(from_folder, from, to_folder,
                                                to)) int renameat2(int from_folder, const char *from,
                                                                   int to_folder, const char *to,
                                                                   unsigned flags)
                                CALL("rename", is_below(to),
                                     REAL(renameat2)(from_folder, from, to_folder, to,
                                                     flags)) int link(const char *from, const char *to)
                                    CALL("rename", is_below(to),
                                         REAL(link)(from, to)) int linkat(int from_folder, const char *from,
                                                                          int to_folder, const char *to,
                                                                          int flags)
                                        CALL("rename", is_below(to),
                                             REAL(linkat)(from_folder, from, to_folder, to,
                                                          flags)) int unlink(const char *path)
                                            CALL("remove", is_below(path),
                                                 REAL(unlink)(path)) int unlinkat(int at_folder,
                                                                                  const char *path, int flags)
                                                CALL("remove", is_below(path),
                                                     REAL(unlinkat)(at_folder, path,
                                                                    flags)) int mkdir(const char *path,
                                                                                      mode_t mode)
                                                    CALL("open", is_below(path),
                                                         REAL(mkdir)(path, mode)) int chmod(const char *path,
                                                                                            mode_t mode)
                                                        CALL("write", is_below(path),
                                                             REAL(chmod)(path, mode)) int fchmod(int file,
                                                                                                 mode_t mode)
                                                            CALL("write", is_watched(file),
                                                                 REAL(fchmod)(file, mode))
