#include "tests/scenarios/monkey.h"

#include <fmt/format.h>

#include <algorithm>

#include "apps/cd1st.h"
#include "audio/aplaylst.h"
#include "audio/iconmin.h"
#include "audio/program_file.h"

namespace tessarel::scenarios {
namespace {

using namespace audio;

constexpr std::size_t remembered = 30;

std::shared_ptr<const platform::CdToc> evenDisc(int tracks, int seconds) { return fakes::makeDisc(tracks, seconds); }

std::shared_ptr<const platform::CdToc> withData(const std::shared_ptr<const platform::CdToc>& disc,
                                                const std::vector<int>& data) {
    auto toc = std::make_shared<platform::CdToc>(*disc);
    for (const int track : data) {
        toc->tracks.at(static_cast<std::size_t>(track - 1)).audio = false;
    }
    return toc;
}

std::shared_ptr<const platform::CdToc> withTexts(const std::shared_ptr<const platform::CdToc>& disc) {
    auto toc = std::make_shared<platform::CdToc>(*disc);
    toc->title = "Evening";
    toc->performer = "The \"Quotes\"";
    for (auto& track : toc->tracks) {
        track.title = "Song " + std::to_string(track.number);
    }
    return toc;
}

const std::vector<std::shared_ptr<const platform::CdToc>>& discs() {
    static const std::vector<std::shared_ptr<const platform::CdToc>> all{
        evenDisc(1, 200),
        evenDisc(1, 3),
        evenDisc(2, 90),
        withTexts(evenDisc(12, 215)),
        evenDisc(12, 61),
        evenDisc(20, 120),
        evenDisc(21, 45),
        withTexts(evenDisc(25, 30)),
        evenDisc(99, 40),
        evenDisc(99, 1),
        fakes::makeToc({4 * 75, 100, 75, 300 * 75, 10, 4 * 75 + 74, 2}, 33),
        fakes::makeToc({70 * 60 * 75, 75}),
        withData(evenDisc(12, 100), {12}),
        withData(evenDisc(12, 50), {1, 5, 6}),
        withData(evenDisc(2, 100), {1}),
        withData(evenDisc(3, 100), {1, 2, 3}),
    };
    return all;
}

}  // namespace

Monkey::Monkey(unsigned seed) : random_(seed) { start(); }

void Monkey::start() {
    machine_ = std::make_unique<Machine>();
    machine_->world.files.put("C:\\WINDOWS\\SYSTEM\\TSLWIN.INI");
    machine_->world.files.putFolder("C:\\Tessarel\\datacd");
    setOptions();
    machine_->program.state.autoStartDone = static_cast<std::int16_t>(upTo(1));
    machine_->program.state.volumeMode = oneIn(3) ? 0 : 3;
    if (!oneIn(3)) {
        putIn(someDisc());
    }
    machine_->program.windows.show("CD1st");
}

void Monkey::setOptions() {
    auto& state = machine_->program.state;
    for (std::size_t i = 1; i <= 5; ++i) {
        state.audioOptions.at(i) = static_cast<std::int16_t>(oneIn(3) ? 1 : 0);
    }
    state.audioOptions[4] = oneOf<std::int16_t>({-1, 0, 2, 5, 10, 30, 31, 32767});
    state.autoStartMode = static_cast<std::int16_t>(oneIn(2) ? 0 : upTo(4));
    state.wallpaperMode = static_cast<std::int16_t>(upTo(3));
    state.noArtOnPlay = static_cast<std::int16_t>(upTo(1));
}

std::shared_ptr<const platform::CdToc> Monkey::someDisc() { return oneOf(discs()); }

void Monkey::putIn(const std::shared_ptr<const platform::CdToc>& disc) {
    takeOut();
    machine_->insert(disc);
}

void Monkey::takeOut() {
    machine_->world.files.clear('D');
    machine_->world.files.drive('D').ready = false;
    machine_->world.cd.pull();
}

void Monkey::act() {
    static const int total = [] {
        int sum = 0;
        for (const auto& act : acts()) {
            sum += act.weight;
        }
        return sum;
    }();
    int at = upTo(total - 1);
    const auto chosen = std::find_if(acts().begin(), acts().end(), [&](const Act& a) { return (at -= a.weight) < 0; });
    deadPress_.clear();
    machine_->world.cd.log.clear();
    machine_->world.cd.heard.clear();
    machine_->world.dialogs.boxes.clear();
    machine_->world.dialogs.answers = {oneIn(2) ? platform::Answer::yes : platform::Answer::no};
    machine_->world.dialogs.fileAnswers = {oneIn(2) ? std::optional<std::string>("D:\\X.EXE") : std::nullopt};
    machine_->world.dialogs.during = oneIn(3) ? std::function<void()>([this] { machine_->run(1500ms); }) : nullptr;
    done_.push_back(std::to_string(++count_) + " ");
    if (done_.size() > remembered) {
        done_.pop_front();
    }
    try {
        done_.back() += chosen->run(*this);
        const PlayerState& p = machine_->state();
        done_.back() += fmt::format(" [mode {} flags {}{} track {}]", p.playMode, p.playingFlag, p.pausedFlag, p.currentTrack);
    } catch (const platform::ProcessEnd&) {
        done_.back() += "the program ends";
        start();
    }
}

void Monkey::rest() {
    try {
        machine_->run(6s + platform::Milliseconds(upTo(99)));
    } catch (const platform::ProcessEnd&) {
        start();
    }
}

std::string Monkey::lastActs() const {
    std::string text;
    for (const auto& act : done_) {
        text += act + "\n";
    }
    return text;
}

void Monkey::onPlayer(const std::function<void(CDForm&)>& press) {
    if (!machine_->program.windows.isLoaded("CDForm")) {
        return;
    }
    if (machine_->program.windows.isVisible("CDForm")) {
        press(machine_->player());
    } else if (auto* icon = machine_->program.windows.find<ICONmin>("ICONmin"); icon != nullptr && oneIn(4)) {
        icon->dispatch([icon] { icon->restore(); });
    }
}

// While the drawer is open only Eject acts: every other press leaves all as it is.
void Monkey::unlessDead(const std::function<void(CDForm&)>& press) {
    if (machine_->program.state.discDrawerOpen != 1 || !machine_->program.windows.isVisible("CDForm")) {
        onPlayer(press);
        return;
    }
    const auto before = whatCouldChange();
    onPlayer(press);
    if (const auto after = whatCouldChange(); after != before) {
        deadPress_ = before + "\n became " + after;
    }
}

std::string Monkey::whatCouldChange() {
    const PlayerState& p = machine_->state();
    std::string text = fmt::format(
        "mode {} repeat {} track {} flags {} {} {} count {} index {} launched {} held {} marks {} {} intro {} time mode {} "
        "calls {} "
        "boxes {} windows",
        p.playMode, p.repeatOn, p.currentTrack, p.playingFlag, p.pausedFlag, p.discFinished, p.programCount, p.programIndex,
        p.playLaunched, p.seekKeyState, p.markA, p.markB, p.introTrack, machine_->program.state.audioTimeMode,
        machine_->world.cd.log.size(), machine_->world.dialogs.boxes.size());
    for (const auto& name : machine_->program.windows.loadedNames()) {
        text += " " + name;
    }
    if (machine_->program.windows.isLoaded("CDForm")) {
        CDForm& form = machine_->player();
        text += " digits " + form.face.trackDigits.Caption.get() + " lamp " + form.face.repeatLamp.Caption.get();
        text += fmt::format(" device {} at {:x} of {} tracks", form.MMControl1.Mode(), form.MMControl1.Position(),
                            form.MMControl1.Tracks());
        text += form.face.keypadEntry.Visible ? " keypad" : "";
    }
    return text;
}

std::string Monkey::transport() {
    const int key = oneOf<int>({transport::prev, transport::next, transport::next, transport::play, transport::play,
                                transport::play, transport::pause, transport::stop});
    unlessDead([key](CDForm& form) { form.face.icntla[key].press(); });
    return fmt::format("transport {}", key);
}

std::string Monkey::seekKeyDown() {
    const int key = upTo(seekKeys::count - 1);
    unlessDead([key](CDForm& form) { form.face.scntla[key].mouseDown(); });
    const int held = oneIn(2) ? 0 : upTo(6000);
    machine_->run(platform::Milliseconds(held));
    return fmt::format("seek key {} down for {} ms", key, held);
}

std::string Monkey::seekKeyUp() {
    const int key = upTo(seekKeys::count - 1);
    unlessDead([key](CDForm& form) { form.face.scntla[key].mouseUp(); });
    return fmt::format("seek key {} up", key);
}

std::string Monkey::mode() {
    const int key = upTo(modeKeys::count - 1);
    unlessDead([key](CDForm& form) { form.face.Image4[key].press(); });
    return fmt::format("mode {}", key);
}

std::string Monkey::function() {
    const int key = oneIn(8) ? upTo(1) : 2 + upTo(1);
    unlessDead([key](CDForm& form) { form.face.Image10[key].press(); });
    return fmt::format("function {}", key);
}

std::string Monkey::programKey() {
    const int key = upTo(programKeys::count - 1);
    unlessDead([key](CDForm& form) { form.face.Image16[key].press(); });
    return fmt::format("program key {}", key);
}

std::string Monkey::cell() {
    const int cell = oneIn(3) ? upTo(gridCells - 1) : upTo(4);
    unlessDead([cell](CDForm& form) { form.face.cells[cell].press(); });
    return fmt::format("cell {}", cell + 1);
}

std::string Monkey::keypad() {
    const auto text = oneOf<std::string>({"", "0", "1", "19", "20", "21", "24", "25", "98", "99", "100", "-3", "abc",
                                          "99999999999", "2e9", "&HFFFF", "20.5", " 22 ", std::string(5000, '9')});
    unlessDead([&](CDForm& form) {
        form.face.Image16[programKeys::keypad].press();
        form.face.keypadEntry.Text = text;
        form.face.keypadEntry.enter();
    });
    return "keypad " + text.substr(0, 20);
}

std::string Monkey::bar() {
    const float x = oneOf<float>({-5.0F, 0.0F, 1.0F, static_cast<float>(upTo(1000)), 999.0F, 1000.0F, 1e6F});
    unlessDead([x](CDForm& form) { form.face.statusBar.pressAt(x); });
    return fmt::format("bar at {}", x);
}

std::string Monkey::lamps() {
    const int lamp = upTo(10);
    unlessDead([lamp](CDForm& form) {
        CDFormFace& f = form.face;
        const std::vector<forms::Control*> all{&f.programLamp,   &f.programLamp, &f.recordLamp, &f.timeCaption,
                                               &f.timeText,      &f.timeColon,   &f.discLamp,   &f.enhancedKey,
                                               &f.wallpaperLamp, &f.abLamp,      &f.webKey};
        all.at(static_cast<std::size_t>(lamp))->press();
    });
    return fmt::format("lamp {}", lamp);
}

std::string Monkey::volume() {
    const int what = upTo(8);
    const int to = upTo(140) - 20;
    onPlayer([&](CDForm& form) {
        CDFormFace& f = form.face;
        switch (what) {
            case 0:
                f.mixerButton.mouseDown(forms::MouseButton::right);
                break;
            case 1:
                f.sliderPanel.mouseDown(forms::MouseButton::right);
                break;
            case 2:
                f.mixerKey.press();
                break;
            case 3:
                f.Image2[upTo(1)].press();
                break;
            case 4:
                f.Image9[upTo(1)].press();
                break;
            case 5:
                machine_->world.levels.changeFromOutside({{upTo(65535), upTo(65535)}, oneIn(4)});
                break;
            default:
                (oneIn(2) ? f.leftSlider : f.rightSlider).moveTo(to);
        }
    });
    return fmt::format("volume {} to {}", what, to);
}

std::string Monkey::windowKeys() {
    const int what = upTo(8);
    onPlayer([&](CDForm& form) {
        switch (what) {
            case 0:
                form.face.expandKey.press();
                break;
            case 1:
                form.face.minimiseKey.press();
                break;
            case 2:
            case 3:
                form.dispatch([&] { form.Form_KeyDown(oneIn(2) ? forms::keys::f1 : forms::keys::help, 0); });
                break;
            case 5:
                form.dispatch([&] { form.Form_MouseDown(oneIn(2) ? forms::MouseButton::left : forms::MouseButton::right); });
                break;
            case 6:
                form.face.upperLine.mouseDown(oneIn(2) ? forms::MouseButton::left : forms::MouseButton::right);
                break;
            case 7:
                form.Move(upTo(100000) - 50000, upTo(100000) - 50000);
                break;
            default:
                form.face.icntla[transport::eject].press();
        }
    });
    return fmt::format("window key {}", what);
}

std::string Monkey::list() {
    auto* list = machine_->program.windows.find<aplaylst>("aplaylst");
    if (list == nullptr) {
        return "no list";
    }
    if (oneIn(2)) {
        list->dispatch([list] { list->Form_KeyDown(forms::keys::escape, 0); });
        return "list shut";
    }
    const int row = upTo(30) - 1;
    list->List1.choose(row);
    return fmt::format("list row {}", row);
}

std::string Monkey::leave() {
    const int what = upTo(2);
    onPlayer([what](CDForm& form) {
        form.dispatch([&] {
            if (what == 0) {
                form.face.exitKey.mouseUp();
            } else if (what == 1) {
                form.face.exitPanel.click();
            } else {
                form.Form_KeyDown(forms::keys::escape, 0);
            }
        });
    });
    return fmt::format("leave by {}", what);
}

std::string Monkey::waitingWindow() {
    const int what = upTo(3);
    if (auto* window = machine_->program.windows.find<apps::CD1st>("CD1st")) {
        if (what == 0) {
            window->firstLine.press();
        } else if (what == 1) {
            window->insertImageKey.press();
        } else if (what == 2) {
            window->dispatch([window] { window->Form_FilesDropped({"Z:\\home\\disc.cue"}); });
        } else {
            window->dispatch([window] { window->Form_MouseDown(forms::MouseButton::right); });
        }
    }
    return fmt::format("waiting window {}", what);
}

std::string Monkey::disc() {
    if (oneIn(3)) {
        takeOut();
        return "disc taken out";
    }
    if (oneIn(4)) {
        onPlayer([](CDForm& form) { form.face.drawerPanel.press(); });
        return "drawer pressed";
    }
    machine_->program.state.runMode =
        oneIn(6) ? oneOf<std::string>({"1", "2", "20", "25", "0", "-4", "150", "abc", "99999999"}) : "";
    const auto disc = someDisc();
    putIn(disc);
    return fmt::format("disc of {} tracks put in, run mode \"{}\"", disc->tracks.size(), machine_->program.state.runMode);
}

std::string Monkey::dropImage() {
    const bool refused = oneIn(3);
    machine_->world.drives.refuseImages = refused ? std::optional(Error{Fault::invalid, "No disc."}) : std::nullopt;
    onPlayer([&](CDForm& form) {
        form.dispatch(
            [&] { form.Form_FilesDropped(oneIn(5) ? std::vector<std::string>() : std::vector<std::string>{"Z:\\disc.cue"}); });
        if (!refused) {
            putIn(someDisc());
        }
    });
    return refused ? "image refused" : "image dropped";
}

std::string Monkey::someProgram() {
    std::string lines;
    const int kind = upTo(7);
    if (kind == 0) {
        return {};
    }
    const int count = oneOf<int>({1, 2, 5, 20, 22, 99, 100, 101, 500});
    for (int i = 0; i < count; ++i) {
        const int track = 1 + upTo(kind == 1 ? 98 : 3);
        lines += kind == 2   ? std::string("track")
                 : kind == 3 ? oneOf<std::string>({"32768", "-1", "99999999999999999999", "0", "1e300", "\"2\"", "1,2", ""})
                             : std::to_string(track);
        lines += kind == 4 ? "\n" : "\r\n";
    }
    return kind == 5 ? lines.substr(0, lines.size() / 2) : lines;
}

std::string Monkey::storedProgram() {
    const auto record = machine_->program.record.discRecordPath;
    if (record.empty()) {
        return "no disc known yet";
    }
    auto& files = machine_->world.files;
    if (oneIn(5)) {
        files.put(record, oneIn(2) ? "\"Artist\"\r\n\"Title\"\r\n\"Notes\"\r\n" : "rubbish");
        return "record put down";
    }
    if (oneIn(6)) {
        files.failWrites = files.failWrites ? std::nullopt : std::optional(Fault::full);
        return "the disk fills or empties";
    }
    files.put(programPath(record), someProgram());
    return "program put down";
}

std::string Monkey::options() {
    setOptions();
    machine_->program.record.timeCorrection = static_cast<std::int16_t>(oneIn(2) ? 0 : upTo(8) - 3);
    return fmt::format("options, time correction {}", machine_->program.record.timeCorrection);
}

std::string Monkey::wait() {
    const int ms = oneOf<int>({0, 50, 100, 350, 1000, 1100, 3000, upTo(60000), upTo(600000)});
    machine_->run(platform::Milliseconds(ms));
    return fmt::format("wait {} ms", ms);
}

const std::vector<Monkey::Act>& Monkey::acts() {
    static const std::vector<Act> all{
        {20, &Monkey::transport}, {6, &Monkey::seekKeyDown},   {8, &Monkey::seekKeyUp},     {8, &Monkey::mode},
        {7, &Monkey::function},   {8, &Monkey::programKey},    {12, &Monkey::cell},         {4, &Monkey::keypad},
        {5, &Monkey::bar},        {6, &Monkey::lamps},         {6, &Monkey::volume},        {8, &Monkey::windowKeys},
        {3, &Monkey::list},       {1, &Monkey::leave},         {2, &Monkey::waitingWindow}, {6, &Monkey::disc},
        {2, &Monkey::dropImage},  {4, &Monkey::storedProgram}, {2, &Monkey::options},       {25, &Monkey::wait},
    };
    return all;
}

}  // namespace tessarel::scenarios
