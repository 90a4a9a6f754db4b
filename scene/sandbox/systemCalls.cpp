#include "containment.h"

#include "childProcess.h"

#include <seccomp.h>

#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <sched.h>
#include <sstream>
#include <string>
#include <sys/prctl.h>
#include <type_traits>
#include <unistd.h>

namespace sandbox {

namespace {

// Names with blanks between them.

constexpr char refused[] =
    // Sockets.
    "socket socketpair connect bind listen accept accept4 "
    // Which files there are, and what is in them.
    "creat truncate ftruncate fallocate rename renameat renameat2 link linkat symlink symlinkat unlink "
    "unlinkat mkdir "
    "mkdirat rmdir mknod mknodat copy_file_range "
    // What is known of files.
    "chmod fchmod fchmodat fchmodat2 chown fchown lchown fchownat utime utimes utimensat futimesat setxattr "
    "lsetxattr "
    "fsetxattr setxattrat removexattr lremovexattr fremovexattr removexattrat file_setattr "
    // Files by other ways than their paths.
    "open_by_handle_at name_to_handle_at open_tree open_tree_attr memfd_secret "
    // The whole system, and its users.
    "mount umount2 move_mount mount_setattr fsopen fsconfig fsmount fspick pivot_root chroot unshare setns "
    "swapon swapoff "
    "reboot kexec_load kexec_file_load init_module finit_module delete_module sethostname setdomainname acct "
    "quotactl "
    "quotactl_fd settimeofday clock_settime adjtimex clock_adjtime iopl ioperm syslog bpf perf_event_open "
    "fanotify_init "
    "userfaultfd add_key request_key keyctl setuid setgid setreuid setregid setresuid setresgid setfsuid "
    "setfsgid "
    "setgroups capset shmget semget msgget mq_open "
    // Its own limits.
    "setrlimit";

/// Left to the address sanitizer, which does such things itself.
constexpr char refused_processes[] =
    // Other programs and processes.
    "execve execveat fork vfork setsid setpgid "
    // Tracing, and memory of others.
    "ptrace process_vm_readv process_vm_writev process_madvise kcmp pidfd_open pidfd_getfd pidfd_send_signal "
    "tkill "
    "rt_sigqueueinfo rt_tgsigqueueinfo";

/// Calls whose arguments lie in memory, where no filter sees them. Without them, programs take the older call.
constexpr char missing[] = "openat2 io_uring_setup io_uring_enter io_uring_register";

class Filter
{
public:
    Filter() : m_filter(seccomp_init(SCMP_ACT_ALLOW)) {}

    /// @param calls  names with blanks between them
    void refuse(std::string const& calls, int error = EPERM)
    {
        std::istringstream names(calls);
        for (std::string call; names >> call;)
            add(call.c_str(), error, 0, {});
    }

    /// Refuses a call whose argument compares so.
    void refuse_if(char const* call, scmp_arg_cmp const& argument, int error = EPERM)
    {
        add(call, error, 1, argument);
    }

    bool load() { return m_filter && m_complete && seccomp_load(m_filter.get()) == 0; }

private:
    void add(char const* call, int error, unsigned count, scmp_arg_cmp const& argument)
    {
        int const number = seccomp_syscall_resolve_name(call);
        if (!m_filter || number == __NR_SCMP_ERROR)
            return; // newer than the library that knows the numbers
        m_complete = seccomp_rule_add_array(m_filter.get(), SCMP_ACT_ERRNO(static_cast<unsigned>(error)),
                                            number, count, &argument) == 0 &&
                     m_complete;
    }

    struct Release
    {
        void operator()(void* filter) const { seccomp_release(filter); }
    };
    std::unique_ptr<std::remove_pointer_t<scmp_filter_ctx>, Release> m_filter;
    bool m_complete = true;
};

/// @param bits  those of the mask that are set, and no others of it; the kernel does not look above the first 32
scmp_arg_cmp has_bits(unsigned argument, scmp_datum_t mask, scmp_datum_t bits)
{
    return {argument, SCMP_CMP_MASKED_EQ, mask, bits};
}

void refuse_writing(Filter& filter)
{
    for (int const flag : {O_WRONLY, O_RDWR, O_CREAT, O_TRUNC, O_TMPFILE & ~O_DIRECTORY}) {
        auto const bit = static_cast<scmp_datum_t>(flag);
        filter.refuse_if("open", has_bits(1, bit, bit));
        filter.refuse_if("openat", has_bits(2, bit, bit));
    }
}

void refuse_processes(Filter& filter)
{
    filter.refuse(refused_processes);
    filter.refuse("clone3", ENOSYS);
    filter.refuse_if("clone", has_bits(0, CLONE_THREAD, 0));
    auto const self = static_cast<scmp_datum_t>(getpid());
    for (char const* const call : {"kill", "tgkill"})
        filter.refuse_if(call, {0, SCMP_CMP_NE, self, 0});
    for (int const option : {PR_SET_PDEATHSIG, PR_SET_DUMPABLE, PR_SET_PTRACER})
        filter.refuse_if("prctl", has_bits(0, 0xffff'ffff, static_cast<scmp_datum_t>(option)));
}

} // namespace

bool refuse_system_calls()
{
    Filter filter;
    filter.refuse(refused);
    filter.refuse(missing, ENOSYS);
    refuse_writing(filter);
    filter.refuse_if("prlimit64", {2, SCMP_CMP_NE, 0, 0});
    if (!under_address_sanitizer())
        refuse_processes(filter);
    return filter.load();
}

} // namespace sandbox
