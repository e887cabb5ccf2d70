#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "device/part.h"
#include "form/session.h"

namespace zentrel::test {

struct RecordingMessages : Messages {
    std::vector<std::string> shown;
    void Show(std::string_view text, std::string_view, MessageIcon) override {
        shown.emplace_back(text);
    }
};

/// Hooks that note their calls and, when a test says so, do something in the middle.
struct RecordingHooks : ScriptHooks {
    std::vector<std::string> calls;
    std::function<void(std::string_view procedure)> body;
    void ExecuteScript(std::string_view module, std::string_view procedure) override {
        calls.push_back(std::string(module) + "." + std::string(procedure));
        if (body) body(procedure);
    }
};

/// A device on the bench: registers and fields are added in a line each.
struct Device {
    Session session;
    RecordingMessages messages;
    RecordingHooks hooks;
    cPart part{session};

    explicit Device(std::int16_t registerLength = 24, std::string_view route = kRouteLpt) {
        session.CommMode_Select = route;
        Upward upward = Upward::None();
        upward.messages = &messages;
        upward.hooks = &hooks;
        part.Connect(upward);
        part.SetRegisterLength(registerLength);
    }

    cRegister& Word(const std::string& name, double value = 0, std::int32_t mask = 0) {
        part.Registers.Add(std::make_shared<cRegister>(part, name, mask, value, true), name);
        cRegister& reg = part.Registers(name);
        reg.SetChange(false);
        return reg;
    }
    cPrgmBits& Field(const std::string& name, const std::string& reg, int position, int length) {
        part.PrgmBits.Add(std::make_shared<cPrgmBits>(part, name, reg,
                                                      static_cast<std::int16_t>(position),
                                                      static_cast<std::int16_t>(length), true),
                          name);
        return part.PrgmBits(name);
    }
    cPrgmPin& Pin(const std::string& name, std::int32_t position, bool readBack = false) {
        part.PrgmPins.Add(std::make_shared<cPrgmPin>(part, name, readBack), name);
        cPrgmPin& pin = part.PrgmPins(name);
        pin.SetPosition(position);
        return pin;
    }
};

} // namespace zentrel::test
