#include "systemCalls.h"

#include "mrTest.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <iostream>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <ucontext.h>
#include <unistd.h>
#include <vector>

#if defined(__x86_64__)

// A system call that the filter lets through, by its address: number, then six arguments.
extern "C" long mr_let_through(long, long, long, long, long, long, long);
extern "C" char const mr_let_through_end[];
asm(R"(
    .pushsection .text
    .globl mr_let_through, mr_let_through_end
    .hidden mr_let_through, mr_let_through_end
    .type mr_let_through, @function
mr_let_through:
    mov %rdi, %rax
    mov %rsi, %rdi
    mov %rdx, %rsi
    mov %rcx, %rdx
    mov %r8, %r10
    mov %r9, %r8
    mov 8(%rsp), %r9
    syscall
mr_let_through_end:
    ret
    .popsection
)");

namespace {

struct Call
{
    unsigned number;
    char const* name;
    int error;
};

constexpr Call calls[] = {
    {SYS_open, "open", EIO},       {SYS_openat, "open", EIO},       {SYS_read, "read", EIO},
    {SYS_readv, "read", EIO},      {SYS_pread64, "read", EIO},      {SYS_write, "write", ENOSPC},
    {SYS_writev, "write", ENOSPC}, {SYS_pwrite64, "write", ENOSPC}, {SYS_lseek, "seek", EIO},
    {SYS_fsync, "fsync", EIO},     {SYS_fdatasync, "fsync", EIO},   {SYS_close, "close", EIO},
    {SYS_rename, "rename", EIO},   {SYS_renameat, "rename", EIO},   {SYS_renameat2, "rename", EIO},
};

// ---- In the child

/// Which calls fail.
struct
{
    bool armed = false;
    bool lasting = false;
    int passing = 0; ///< calls that go well before the first that fails
    int met = 0;
    char const* failed = ""; ///< the first
} faults;

/// @return 0 or the error number
int choose_fault(unsigned number)
{
    if (!faults.armed || faults.met++ < faults.passing ||
        (!faults.lasting && faults.met > faults.passing + 1))
        return 0;
    for (Call const& call : calls)
        if (call.number == number) {
            if (faults.met == faults.passing + 1)
                faults.failed = call.name;
            return call.error;
        }
    return 0;
}

void take_call(int, siginfo_t* info, void* context)
{
    greg_t* const registers = static_cast<ucontext_t*>(context)->uc_mcontext.gregs;
    auto const number = static_cast<unsigned>(info->si_syscall);
    int const error = choose_fault(number);
    long result = 0;
    if (error == 0 || number == SYS_close)
        result = mr_let_through(number, registers[REG_RDI], registers[REG_RSI], registers[REG_RDX],
                                registers[REG_R10], registers[REG_R8], registers[REG_R9]);
    registers[REG_RAX] = error == 0 ? result : -error;
}

std::vector<sock_filter> make_filter()
{
    auto const end = reinterpret_cast<std::uintptr_t>(mr_let_through_end);
    constexpr unsigned place = offsetof(seccomp_data, instruction_pointer);
    std::vector<sock_filter> filter{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, place),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(end), 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, place + 4),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(end >> 32), 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
    };
    for (Call const& call : calls) {
        filter.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, call.number, 0, 1));
        filter.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRAP));
    }
    filter.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    return filter;
}

/// @return whether calls come to take_call() from now on
bool catch_calls()
{
    struct sigaction action = {};
    action.sa_sigaction = take_call;
    action.sa_flags = SA_SIGINFO;
    sigaction(SIGSYS, &action, nullptr);
    std::vector<sock_filter> filter = make_filter();
    sock_fprog const program{static_cast<unsigned short>(filter.size()), filter.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

/// What the child tells: the name of the call that failed, empty when none did, a line feed, and what is wrong.
std::string do_work(FaultyWork const& faulty)
{
    faulty.prepare();
    std::ptrdiff_t const open_files = count_open_files();
    faults.armed = true;
    faulty.work();
    faults.armed = false;
    std::string wrong = faulty.judge();
    if (count_open_files() != open_files)
        wrong += " a file is left open";
    return std::string(faults.failed) + '\n' + wrong;
}

// ---- In the test

std::string read_all(int pipe)
{
    std::string text;
    std::array<char, 4096> part;
    for (ssize_t count; (count = read(pipe, part.data(), part.size())) > 0;)
        text.append(part.data(), static_cast<std::size_t>(count));
    return text;
}

/// @return what the child tells
std::string run_child(FaultyWork const& faulty, int passing, bool lasting)
{
    int ends[2];
    if (pipe(ends) != 0)
        return "\nno pipe";
    pid_t const child = fork();
    if (child == 0) {
        faults = {.lasting = lasting, .passing = passing};
        std::string const told = catch_calls() ? do_work(faulty) : "\nno filter";
        _exit(write(ends[1], told.data(), told.size()) == std::ssize(told) ? 0 : 1);
    }
    close(ends[1]);
    std::string told = read_all(ends[0]);
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return "\nthe child ended with status " + std::to_string(status);
    return told;
}

} // namespace

void fail_every_call(FaultyWork const& faulty)
{
    int count = 0;
    for (bool const lasting : {false, true})
        for (int passing = 0;; ++passing, ++count) {
            std::string const told = run_child(faulty, passing, lasting);
            std::string const call = told.substr(0, told.find('\n'));
            std::string const wrong = told.substr(call.size() + 1);
            EXPECT_EQ(wrong, "") << faulty.name << ": after " << passing << " calls " << call << " failed"
                                 << (lasting ? ", and all after it" : "");
            if (call.empty())
                break;
        }
    EXPECT_GT(count, 0) << faulty.name;
    std::cout << faulty.name << ": " << count << " faults\n";
}

bool can_fail_calls()
{
    return run_child({"", [] {}, [] {}, [] { return std::string(); }}, 0, false) == "\n";
}

#else

void fail_every_call(FaultyWork const&) {}

bool can_fail_calls()
{
    return false;
}

#endif
