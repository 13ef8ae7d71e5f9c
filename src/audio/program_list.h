#pragma once

namespace tessarel::audio {

/// What the Audio CD window asks of the list of its program.
class ProgramList {
public:
    static constexpr const char* windowName = "aplaylst";

    virtual ~ProgramList() = default;
    /// Fills the list anew from the program.
    virtual void refill() = 0;
    /// Selects a row, counted from 0; none for a row that is not there.
    virtual void selectRow(int row) = 0;
};

}  // namespace tessarel::audio
