#pragma once

#include <memory>
#include <string>
#include <vector>

#include "device/part.h"
#include "form/session.h"

/// What the tests of the screens share: a device by hand, and a record of what it shows and asks.
namespace zentrel::desk {

class Recorder : public Displays, public Messages, public StatusLine, public MenuOptions {
  public:
    std::vector<std::string> refreshed;
    std::vector<std::string> shown;
    std::vector<std::string> titles;
    std::string status = "before";
    bool autoReload = true;

    void UpdatePLLDisplay() override { refreshed.emplace_back("PLL"); }
    void UpdateCLKDISTDisplay() override { refreshed.emplace_back("CLKDIST"); }
    void UpdateBitDisplay() override {
        refreshed.emplace_back("Bit");
        if (onBits) onBits();
    }
    void UpdateRegisterDisplay() override {
        refreshed.emplace_back("Register");
        if (onRegisters) onRegisters();
    }
    void Show(std::string_view text, std::string_view title, MessageIcon) override {
        shown.emplace_back(text);
        titles.emplace_back(title);
    }
    void StatusBar_SetString(std::string_view text) override { status = text; }
    bool AutoReloadWithChanges() const override { return autoReload; }

    std::function<void()> onBits, onRegisters;
};

/// A device of 24-bit words with 4 control bits.
class Desk {
  public:
    explicit Desk(std::string_view route = kRouteLpt) {
        Upward upward = Upward::None();
        upward.displays = &recorder;
        upward.messages = &recorder;
        upward.status = &recorder;
        upward.options = &recorder;
        part.Connect(upward);
        session.CommMode_Select = route;
        part.ID = "QVX9001";
        part.SetRegisterLength(24);
        part.ControlLength = 4;
    }

    cRegister& AddRegister(const std::string& name, double value = 0, std::int32_t mask = 15) {
        auto reg = std::make_shared<cRegister>(part, name, mask, value, true);
        part.Registers.Add(reg, name);
        reg->SetChange(false);
        return *reg;
    }
    cPrgmBits& AddField(const std::string& name, const std::string& reg, std::int16_t position,
                        std::int16_t length) {
        auto field = std::make_shared<cPrgmBits>(part, name, reg, position, length, true);
        part.PrgmBits.Add(field, name);
        return *field;
    }
    cPrgmPin& AddPin(const std::string& name, std::int32_t position, bool readBack = false) {
        auto pin = std::make_shared<cPrgmPin>(part, name, readBack);
        pin->SetPosition(std::int32_t{position});
        part.PrgmPins.Add(pin, name);
        return *pin;
    }

    Session session;
    Recorder recorder;
    cPart part{session};
};

} // namespace zentrel::desk
