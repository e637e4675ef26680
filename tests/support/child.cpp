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
extern "C" void __gcov_dump(); // of the compiler's library that counts what is run
#else
static void __gcov_dump()
{
}
#endif

// The library removes its directory for temporary files at an exit, which these
// children do not make.
static void leave_nothing()
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
        std::string answer = operation();
        leave_nothing();
        _exit(write(ends[1], answer.data(), answer.size()) == (ssize_t)answer.size() ? 0 : 1);
    }
    close(ends[1]);
    std::string answer;
    char block[4096];
    for (ssize_t length; (length = read(ends[0], block, sizeof block)) > 0;)
        answer.append(block, (size_t)length);
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    return status == 0 ? answer : "died";
}

// They keep the process alive, or their number changes from run to run.
static bool is_left_alone(long call)
{
    static const std::set<long> calls = {
        SYS_mmap,    SYS_munmap,         SYS_mremap,      SYS_brk,        SYS_mprotect,
        SYS_madvise, SYS_rt_sigprocmask, SYS_sigaltstack, SYS_exit_group, SYS_getrandom};
    return calls.contains(call);
}

// Leaves the answer in memory that the parent sees: writing it may be refused.
// The last byte tells that it is there, and that faults are over.
static pid_t start_traced(const std::function<std::string()> &operation, char *answer, size_t width)
{
    pid_t child = fork();
    if (child == 0) {
        ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        raise(SIGSTOP);
        operation().copy(answer, width - 2);
        answer[width - 1] = 1;
        leave_nothing();
        _exit(0);
    }
    waitpid(child, nullptr, 0);
    ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    return child;
}

// Lets the child go on to the next beginning or end of a system call.
static bool go_on(pid_t child, user_regs_struct *register_paths, int *status)
{
    ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
    waitpid(child, status, 0);
    return WIFSTOPPED(*status) && ptrace(PTRACE_GETREGS, child, nullptr, register_paths) == 0;
}

static void set_registers(pid_t child, user_regs_struct *register_paths, unsigned long long *one,
                          long value)
{
    *one = (unsigned long long)value;
    ptrace(PTRACE_SETREGS, child, nullptr, register_paths);
}

// What a process holds on to: its descriptors and its current directory.
static std::string holdings(pid_t child)
{
    const std::string process = "/proc/" + std::to_string(child);
    const std::filesystem::directory_iterator descriptors(process + "/fd");
    return std::to_string(std::distance(begin(descriptors), {})) + " descriptors, in " +
           std::filesystem::read_symlink(process + "/cwd").string();
}

// What becomes of a child that makes all its calls but those that the wish is
// about, up to its answer.
struct course {
    std::vector<long> calls;
    std::string change; // of what it holds on to
    int status = 0;
};

// A descriptor is closed even where closing it fails.
static course follow(pid_t child, const fault &wish, const char *is_done)
{
    course made;
    user_regs_struct register_paths = {};
    const std::string before = holdings(child);
    long refused = -1; // the kind of call
    while (go_on(child, &register_paths, &made.status)) {
        if (*is_done) {
            if (holdings(child) != before)
                made.change = before + " became " + holdings(child);
            ptrace(PTRACE_DETACH, child, nullptr, nullptr);
            waitpid(child, &made.status, 0);
            break;
        }
        long call = (long)register_paths.orig_rax;
        bool is_due = false;
        if (!is_left_alone(call)) {
            made.calls.push_back(call);
            is_due = (int)made.calls.size() == wish.nth || (wish.for_good && call == refused);
        }
        if (is_due && wish.error == 0)
            kill(child, SIGKILL);
        is_due = is_due && wish.error != 0;
        if (is_due && call != SYS_close)
            set_registers(child, &register_paths, &register_paths.orig_rax, -1);
        if (!go_on(child, &register_paths, &made.status))
            break;
        if (is_due)
            set_registers(child, &register_paths, &register_paths.rax, -wish.error);
        refused = is_due ? call : refused;
    }
    return made;
}

static course run(const fault &wish, const std::function<std::string()> &operation,
                  std::string *answer)
{
    constexpr size_t width = 1 << 16;
    void *shared = mmap(nullptr, width, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    char *text = (char *)shared;
    course made = follow(start_traced(operation, text, width), wish, &text[width - 1]);
    bool is_whole = WIFEXITED(made.status) && WEXITSTATUS(made.status) == 0;
    *answer = is_whole ? text + made.change : "killed";
    munmap(shared, width);
    return made;
}

std::string run_with_fault(const fault &wish, const std::function<std::string()> &operation,
                           long *call)
{
    std::string answer;
    const std::vector<long> calls = run(wish, operation, &answer).calls;
    const size_t place = (size_t)wish.nth - 1;
    *call = place < calls.size() ? calls[place] : -1;
    return answer;
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
