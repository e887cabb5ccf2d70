#pragma once

namespace zentrel {

/// What calls ask of the main window's frame, beyond its being shown.
class WindowFrame {
  public:
    virtual ~WindowFrame() = default;
    virtual void Maximize() {}
    virtual void Minimize() {}
    /// Ahead of the other programs' windows; a minimised window comes up again.
    virtual void BringToFront() {}
};

} // namespace zentrel
