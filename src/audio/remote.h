#pragma once

namespace tessarel::audio {

struct CDFormFace;

/// What the Audio CD window asks of the small window that stands in for it; that window implements it.
class Remote {
public:
    static constexpr const char* windowName = "VolCntl";

    virtual ~Remote() = default;
    /// Copies digits, time, lines, cells, program lamp and bar where they differ.
    virtual void mirror(const CDFormFace& face) = 0;
    /// Back to the lights of a stopped player.
    virtual void resetLights() = 0;
};

/// What the Audio CD window asks of the list of its program.
class ProgramList {
public:
    static constexpr const char* windowName = "aplaylst";

    virtual ~ProgramList() = default;
    /// Fills the list anew from the program.
    virtual void refill() = 0;
    /// Selects a row, counted from 0.
    virtual void selectRow(int row) = 0;
};

}  // namespace tessarel::audio
