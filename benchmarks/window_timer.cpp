// window_timer PROGRAM [ARGUMENT...]: starts a program on the display, tells the milliseconds until it maps its first
// window, and ends it.
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

namespace
{

using Clock = std::chrono::steady_clock;

// True once the event says that a window has come up, menus and the like not counted.
bool isFirstWindow(const xcb_generic_event_t& event)
{
    constexpr unsigned Sent = 0x80;
    return (event.response_type & ~Sent) == XCB_MAP_NOTIFY &&
           reinterpret_cast<const xcb_map_notify_event_t&>(event).override_redirect == 0;
}

bool waitForWindow(xcb_connection_t* display, Clock::time_point until)
{
    pollfd wait = {xcb_get_file_descriptor(display), POLLIN, 0};
    while (Clock::now() < until && xcb_connection_has_error(display) == 0) {
        const std::unique_ptr<xcb_generic_event_t, decltype(&std::free)> event(xcb_poll_for_event(display), &std::free);
        if (!event)
            poll(&wait, 1, 100);
        else if (isFirstWindow(*event))
            return true;
    }
    return false;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2) {
        std::cerr << "usage: window_timer PROGRAM [ARGUMENT...]\n";
        return 2;
    }
    xcb_connection_t* display = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(display) != 0) {
        std::cerr << "window_timer: no display\n";
        return 1;
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(display)).data->root;
    const uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(display, root, XCB_CW_EVENT_MASK, &events);
    free(xcb_get_input_focus_reply(display, xcb_get_input_focus(display), nullptr)); // the mask is in force

    const auto begin = Clock::now();
    const pid_t program = fork();
    if (program == 0) {
        execv(argv[1], argv + 1);
        _exit(127);
    }
    const bool shown = waitForWindow(display, begin + std::chrono::seconds(20));
    const std::chrono::duration<double, std::milli> took = Clock::now() - begin;
    kill(program, SIGKILL);
    waitpid(program, nullptr, 0);
    xcb_disconnect(display);
    if (!shown) {
        std::cerr << "window_timer: " << argv[1] << " showed no window\n";
        return 1;
    }
    std::cout << took.count() << '\n';
    return 0;
}
