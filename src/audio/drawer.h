#pragma once

namespace tessarel::audio {

/// What the waiting window asks of a disc window whose disc has gone.
class Drawer {
public:
    virtual ~Drawer() = default;
    virtual bool drawerOpen() const = 0;
    /// Runs the drawer's animation until it is shut.
    virtual void closedrawer() = 0;
};

}  // namespace tessarel::audio
