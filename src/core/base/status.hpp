#pragma once
// The modeless status line that long work keeps up to date. The desktop implementation pumps
// events in these calls, which is how the single-threaded program stays responsive; the core
// never calls the GUI itself.

#include <string>

namespace arborex {

class StatusScreen {
public:
    virtual ~StatusScreen() = default;
    // Shows the screen with `text` and the wait cursor, and empties its bar.
    virtual void show(const std::string& text) = 0;
    // Changes the text of a shown screen.
    virtual void setText(const std::string& text) = 0;
    // Fills the bar to `percent` (0 to 100).
    virtual void setPercent(int percent) = 0;
    // Closes the screen and restores the cursor.
    virtual void close() = 0;
};

// For callers with nobody to tell.
class SilentStatus final : public StatusScreen {
public:
    void show(const std::string&) override {}
    void setText(const std::string&) override {}
    void setPercent(int) override {}
    void close() override {}
};

}  // namespace arborex
