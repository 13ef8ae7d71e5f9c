#include "shell/ender.h"

#include <gtest/gtest.h>

#include "tests/fakes/world.h"

namespace tessarel::shell {
namespace {

class LeavingForms : public testing::Test {
protected:
    LeavingForms() {
        fakes::declarePlain(world.windows, {"VolCntl", "frmTray", "CDROMer"});
        world.windows.declare("ender", [this](forms::Windows& w) { return std::make_unique<Ender>(w, world.context); });
        world.windows.declare("Form16", [this](forms::Windows& w) { return std::make_unique<Form16>(w, world.context); });
    }

    Form16& passwordForm() {
        world.windows.show("Form16");
        return *world.windows.find<Form16>("Form16");
    }

    fakes::World world;
};

TEST_F(LeavingForms, TheOrderlyExitTidiesUpAndEndsTheProcess) {
    world.files.put("C:\\Tessarel\\TSL.DAT");
    world.windows.show("VolCntl");
    world.windows.show("frmTray");
    world.state.cursorHidden = 1;
    EXPECT_TRUE(fakes::endsProcess([this] { world.windows.show("ender"); }));
    EXPECT_TRUE(world.windows.loadedNames().empty());
    EXPECT_FALSE(world.files.exists("C:\\Tessarel\\TSL.DAT"));
    EXPECT_EQ(world.files.currentDirectory(), "C:\\Tessarel");
    EXPECT_EQ(world.state.cursorHidden, 0);
    EXPECT_TRUE(world.system.pointerVisible);
}

TEST_F(LeavingForms, TheRightPasswordOpensTheCdRomWindow) {
    world.state.libPassword = "sesame     ";
    auto& form = passwordForm();
    EXPECT_EQ(form.Caption.get(), "Password Entry");
    form.password.Text = std::string("sesame");
    EXPECT_FALSE(fakes::endsProcess([&form] { form.accept.press(); }));
    EXPECT_TRUE(world.windows.isVisible("CDROMer"));
    EXPECT_FALSE(world.windows.isLoaded("Form16"));
    EXPECT_EQ(world.system.beeps, 0);
}

TEST_F(LeavingForms, AWrongPasswordBeepsAndEndsTheProcess) {
    world.state.libPassword = "sesame";
    auto& form = passwordForm();
    form.password.Text = std::string("Sesame");
    EXPECT_TRUE(fakes::endsProcess([&form] { form.password.enter(); }));
    EXPECT_EQ(world.system.beeps, 1);
    EXPECT_FALSE(world.windows.isVisible("CDROMer"));
}

}  // namespace
}  // namespace tessarel::shell
