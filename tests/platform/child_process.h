// Another process, forked from the test.
#pragma once

#include <csignal>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

namespace harvelop::test
{

// Runs `prepare`, tells that it did, then `work`, and ends; is killed with this object at the latest. The constructor
// returns when `prepare` is done.
class ChildProcess
{
public:
    explicit ChildProcess(
        const std::function<void()>& prepare, const std::function<void()>& work = [] { pause(); })
    {
        int ready[2];
        if (pipe(ready) != 0)
            return;
        m_id = fork();
        if (m_id == 0) {
            prepare();
            const bool told = write(ready[1], "x", 1) == 1;
            if (told)
                work();
            _exit(told ? 0 : 1);
        }
        close(ready[1]);
        char told = 0;
        m_ready = read(ready[0], &told, 1) == 1;
        close(ready[0]);
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess() { Kill(); }

    bool Ready() const { return m_ready; }
    pid_t Id() const { return m_id; }

    // Gives how the process ended, as `waitpid` does.
    int Wait()
    {
        int status = -1;
        if (m_id > 0)
            waitpid(m_id, &status, 0);
        m_id = -1;
        return status;
    }
    void Kill()
    {
        if (m_id > 0)
            kill(m_id, SIGKILL);
        Wait();
    }

private:
    pid_t m_id = -1;
    bool m_ready = false;
};

// Acts as a user without rights for as long as it lives, where the test runs as the superuser.
class PlainUser
{
public:
    PlainUser() : m_active(geteuid() == 0 && seteuid(Nobody) == 0) {}
    PlainUser(const PlainUser&) = delete;
    PlainUser& operator=(const PlainUser&) = delete;
    ~PlainUser()
    {
        if (m_active && seteuid(0) != 0)
            _exit(1);
    }

    static constexpr uid_t Nobody = 65534;

private:
    bool m_active;
};

} // namespace harvelop::test
