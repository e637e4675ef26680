#include "child.h"

#include "vek.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>
#include <sys/mman.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#ifdef VEK_COVERAGE
extern "C" void __gcov_dump(); // of the compiler's coverage library
#else
static void __gcov_dump()
{
}
#endif

// The library removes its directory for temporary files in exit(), which these children
// do not call.
static void clean_up()
{
    const char *dir = vorn_vek_tmp_file_path();
    if (dir != nullptr)
        rmdir(dir);
    __gcov_dump();
}

std::string run_in_child(const std::function<std::string()> &operation)
{
    int ends[2];
    if (pipe(ends) != 0)
        abort();
    pid_t child = fork();
    if (child == 0) {
        std::string result = operation();
        clean_up();
        _exit(write(ends[1], result.data(), result.size()) == (ssize_t)result.size() ? 0 : 1);
    }
    close(ends[1]);
    std::string result;
    char block[4096];
    for (ssize_t length; (length = read(ends[0], block, sizeof block)) > 0;)
        result.append(block, (size_t)length);
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    return status == 0 ? result : "died";
}

// Calls that the process needs to survive, or whose number differs from run to run.
static bool is_exempt(long call)
{
    static const std::set<long> calls = {
        SYS_mmap,    SYS_munmap,         SYS_mremap,      SYS_brk,        SYS_mprotect,
        SYS_madvise, SYS_rt_sigprocmask, SYS_sigaltstack, SYS_exit_group, SYS_getrandom};
    return calls.contains(call);
}

// Start a traced child.  It leaves the result in shared memory, since writing it to a pipe
// could fail.  The last byte is set when the result is complete: no faults after that.
static pid_t start_traced(const std::function<std::string()> &operation, char *result, size_t size)
{
    pid_t child = fork();
    if (child == 0) {
        ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        raise(SIGSTOP);
        operation().copy(result, size - 2);
        result[size - 1] = 1;
        clean_up();
        _exit(0);
    }
    waitpid(child, nullptr, 0);
    ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    return child;
}

// Continue the child to the next entry or exit of a system call.  Returns false if it ended.
static bool run_to_next_stop(pid_t child, user_regs_struct *registers, int *status)
{
    ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
    waitpid(child, status, 0);
    return WIFSTOPPED(*status) && ptrace(PTRACE_GETREGS, child, nullptr, registers) == 0;
}

static void set_registers(pid_t child, user_regs_struct *registers, unsigned long long *one,
                          long value)
{
    *one = (unsigned long long)value;
    ptrace(PTRACE_SETREGS, child, nullptr, registers);
}

// Describes the resources of a process: its descriptors and its current directory.
static std::string resources(pid_t child)
{
    const std::string process = "/proc/" + std::to_string(child);
    const std::filesystem::directory_iterator descriptors(process + "/fd");
    return std::to_string(std::distance(begin(descriptors), {})) + " descriptors, in " +
           std::filesystem::read_symlink(process + "/cwd").string();
}

// A run of a child with a fault, up to its result.
struct traced_run {
    std::vector<long> calls;
    std::string change; // of its resources
    int status = 0;
};

// A failing close() still closes the descriptor.
static traced_run trace(pid_t child, const fault &planted, const char *is_done)
{
    traced_run made;
    user_regs_struct registers = {};
    const std::string before = resources(child);
    long failed = -1; // the call that the fault hit
    while (run_to_next_stop(child, &registers, &made.status)) {
        if (*is_done) {
            if (resources(child) != before)
                made.change = before + " became " + resources(child);
            ptrace(PTRACE_DETACH, child, nullptr, nullptr);
            waitpid(child, &made.status, 0);
            break;
        }
        long call = (long)registers.orig_rax;
        bool is_due = false;
        if (!is_exempt(call)) {
            made.calls.push_back(call);
            is_due =
                (int)made.calls.size() == planted.nth || (planted.persistent && call == failed);
        }
        if (is_due && planted.error == 0)
            kill(child, SIGKILL);
        is_due = is_due && planted.error != 0;
        if (is_due && call != SYS_close)
            set_registers(child, &registers, &registers.orig_rax, -1);
        if (!run_to_next_stop(child, &registers, &made.status))
            break;
        if (is_due)
            set_registers(child, &registers, &registers.rax, -planted.error);
        failed = is_due ? call : failed;
    }
    return made;
}

static traced_run run(const fault &planted, const std::function<std::string()> &operation,
                      std::string *result)
{
    constexpr size_t size = 1 << 16;
    void *shared = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    char *text = (char *)shared;
    traced_run made = trace(start_traced(operation, text, size), planted, &text[size - 1]);
    bool is_whole = WIFEXITED(made.status) && WEXITSTATUS(made.status) == 0;
    *result = is_whole ? text + made.change : "killed";
    munmap(shared, size);
    return made;
}

std::string run_with_fault(const fault &planted, const std::function<std::string()> &operation,
                           long *call)
{
    std::string result;
    const std::vector<long> calls = run(planted, operation, &result).calls;
    const size_t pos = (size_t)planted.nth - 1;
    *call = pos < calls.size() ? calls[pos] : -1;
    return result;
}

std::vector<long> system_calls(const std::function<std::string()> &operation)
{
    std::string ignored;
    return run({}, operation, &ignored).calls;
}

std::vector<int> errors_of(long call)
{
    static const std::map<long, std::vector<int>> known = {
        {SYS_openat, {EACCES, EIO, EMFILE, ENOENT, ENOSPC, EINTR}},
        {SYS_read, {EIO, EINTR}},
        {SYS_write, {EIO, ENOSPC, EINTR}},
        {SYS_close, {EIO, ENOSPC, EINTR}},
        {SYS_fsync, {EIO, ENOSPC, EINTR}},
        {SYS_ftruncate, {EACCES, EIO, EINTR}},
        {SYS_flock, {EINTR}},
        {SYS_lseek, {EIO}},
        {SYS_fcntl, {EIO}},
        {SYS_mkdir, {EACCES, EIO, ENOENT, ENOSPC}},
        {SYS_mkdirat, {EACCES, EEXIST, EIO, ENOENT, ENOSPC}},
        {SYS_renameat2, {EACCES, EIO, ENOENT, ENOSPC, EINVAL}}};
    auto found = known.find(call);
    return found == known.end() ? std::vector<int>{EACCES, EIO, ENOENT} : found->second;
}
