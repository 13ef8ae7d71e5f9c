#include "host/desktop/window_finder.h"

#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <chrono>
#include <fstream>
#include <memory>
#include <string>
#include <thread>

#include "tests/desktop/servers.h"

namespace tessarel::host {
namespace {

using namespace std::chrono_literals;

/// An X server of the tests' own, and on it one window with a class and a caption.
class WindowFinder : public ::testing::Test {
protected:
    static void SetUpTestSuite() { server() = std::make_unique<Server>(); }
    static void TearDownTestSuite() { server().reset(); }

    void setText(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, const std::string& text) {
        xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, window, property, type, 8,
                            static_cast<std::uint32_t>(text.size()), text.data());
        sync();
    }
    xcb_atom_t atom(const std::string& name) {
        auto* reply = xcb_intern_atom_reply(
            connection(), xcb_intern_atom(connection(), 0, static_cast<std::uint16_t>(name.size()), name.c_str()), nullptr);
        const auto result = reply->atom;
        free(reply);
        return result;
    }
    void destroy(xcb_window_t window) {
        xcb_destroy_window(connection(), window);
        sync();
    }
    xcb_window_t newWindow() {
        const auto window = xcb_generate_id(connection());
        xcb_create_window(connection(), XCB_COPY_FROM_PARENT, window, root(), 0, 0, 10, 10, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                          XCB_COPY_FROM_PARENT, 0, nullptr);
        return window;
    }
    void setClientList(const std::vector<xcb_window_t>& windows) {
        xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, root(), atom("_NET_CLIENT_LIST"), XCB_ATOM_WINDOW, 32,
                            static_cast<std::uint32_t>(windows.size()), windows.data());
        sync();
    }
    xcb_connection_t* connection() { return server()->connection; }

private:
    struct Server {
        Server()
            : process({"Xvfb", "-displayfd", "1", "-screen", "0", "320x200x24", "-nolisten", "tcp"}, folder.file("display")),
              display("DISPLAY", ":" + displayNumber()),
              connection(xcb_connect(nullptr, nullptr)) {}
        ~Server() { xcb_disconnect(connection); }
        Server(const Server&) = delete;
        Server& operator=(const Server&) = delete;

        std::string displayNumber() const {
            std::string line;
            for (int i = 0; i < 1000 && !line.ends_with('\n'); ++i) {
                std::this_thread::sleep_for(5ms);
                std::ifstream file(folder.file("display"));
                line.assign(std::istreambuf_iterator<char>(file), {});
            }
            return line.substr(0, line.find('\n'));
        }

        TemporaryFolder folder;
        Child process;
        ScopedVariable display;
        xcb_connection_t* connection;
    };

    static std::unique_ptr<Server>& server() {
        static std::unique_ptr<Server> instance;
        return instance;
    }
    xcb_window_t root() { return xcb_setup_roots_iterator(xcb_get_setup(connection())).data->root; }
    void sync() { free(xcb_get_input_focus_reply(connection(), xcb_get_input_focus(connection()), nullptr)); }
};

TEST_F(WindowFinder, EitherPartOfTheClassCounts) {
    const auto window = newWindow();
    setText(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, std::string("calc\0SciCalc\0", 13));
    EXPECT_TRUE(findWindow("SciCalc", ""));
    EXPECT_TRUE(findWindow("calc", ""));
    EXPECT_FALSE(findWindow("Calc", ""));
    EXPECT_FALSE(findWindow("alc", ""));
    EXPECT_FALSE(findWindow("Notepad", ""));
    destroy(window);
}

TEST_F(WindowFinder, AClassPropertyThatIsCutShortIsStillRead) {
    const auto window = newWindow();
    setText(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, "Lonely");
    EXPECT_TRUE(findWindow("Lonely", ""));
    setText(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, "");
    EXPECT_FALSE(findWindow("Lonely", ""));
    destroy(window);
}

TEST_F(WindowFinder, TheCaptionMustBeTheWholeOne) {
    const auto window = newWindow();
    setText(window, atom("_NET_WM_NAME"), atom("UTF8_STRING"), "Volume Control");
    EXPECT_TRUE(findWindow("", "Volume Control"));
    EXPECT_FALSE(findWindow("", "Volume"));
    EXPECT_FALSE(findWindow("", "volume control"));
    destroy(window);
}

TEST_F(WindowFinder, AnOldProgramsCaptionIsFoundToo) {
    const auto window = newWindow();
    setText(window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, "Jazz Pocket Mixer");
    EXPECT_TRUE(findWindow("", "Jazz Pocket Mixer"));
    destroy(window);
    EXPECT_FALSE(findWindow("", "Jazz Pocket Mixer"));
}

TEST_F(WindowFinder, TheWindowManagersListIsTakenWhereThereIsOne) {
    const auto listed = newWindow();
    const auto unlisted = newWindow();
    setText(listed, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, "Listed");
    setText(unlisted, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, "Unlisted");
    setClientList({listed, 12345});
    EXPECT_TRUE(findWindow("", "Listed"));
    EXPECT_FALSE(findWindow("", "Unlisted"));
    setClientList({});
    destroy(listed);
    destroy(unlisted);
}

TEST_F(WindowFinder, TwoEmptyTextsFindNothing) {
    const auto window = newWindow();
    setText(window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, "");
    EXPECT_FALSE(findWindow("", ""));
    destroy(window);
}

TEST(WindowFinderWithoutServer, NothingIsFound) {
    const ScopedVariable nowhere("DISPLAY", ":65001");
    EXPECT_FALSE(findWindow("SciCalc", ""));
    EXPECT_FALSE(findWindow("", "Volume Control"));
}

}  // namespace
}  // namespace tessarel::host
