#pragma once

#include <csignal>
#include <ctime>
#include <pthread.h>

namespace Zelmar01 {

/// Keeps SIGPIPE away from the calling thread while it writes to something whose other end may go away, and
/// leaves the process's handling of the signal as it was.
class SigPipeGuard
{
public:
    SigPipeGuard()
    {
        sigemptyset(&m_pipe);
        sigaddset(&m_pipe, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &m_pipe, &m_old);
    }

    ~SigPipeGuard()
    {
        // Where the host holds the signal back itself, one that waits may be its own and stays.
        if (m_isRaised && !sigismember(&m_old, SIGPIPE)) {
            const timespec now = {};
            sigtimedwait(&m_pipe, nullptr, &now);
        }
        pthread_sigmask(SIG_SETMASK, &m_old, nullptr);
    }

    /// To be called when a write has failed with EPIPE.
    void Raised() { m_isRaised = true; }

    SigPipeGuard(const SigPipeGuard &) = delete;
    SigPipeGuard &operator=(const SigPipeGuard &) = delete;

private:
    sigset_t m_pipe, m_old;
    bool m_isRaised = false;
};

} // namespace Zelmar01
