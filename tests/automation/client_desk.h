#pragma once

#include <functional>
#include <string>
#include <vector>

#include "automation/application/application.h"
#include "automation/application/window_frame.h"
#include "tests/setups/bench_desk.h"

namespace zentrel {

/// A bench with a client at it: the program on copies of the shipped parts, and what the client
/// sees of it.
struct ClientDesk : BenchDesk {
    ClientDesk() {
        Upward upward = part.upward();
        upward.pause = &between;
        part.Connect(upward);
    }

    /// Acts between two passes of a burst.
    struct Between : EventPause {
        std::function<void(int pass)> act;
        int passes = 0;
        void Pause() override {
            ++passes;
            ASSERT_LT(passes, 1000) << "the run never ends";
            if (act) act(passes);
            guard->ServePause();
        }
        EventGuard* guard = nullptr;
    };

    struct Frame : WindowFrame {
        std::vector<std::string> did;
        void Maximize() override { did.emplace_back("maximised"); }
        void Minimize() override { did.emplace_back("minimised"); }
        void BringToFront() override { did.emplace_back("front"); }
    };

    /// The registers that the board latched since the last call, in order.
    std::vector<std::string> Sent() {
        std::vector<std::string> names;
        for (const LatchedWord& word : bench.board.history())
            names.push_back(word.registerName);
        bench.board.ForgetHistory();
        return names;
    }

    Between between;
    Frame frame;
    Application application{*frm, frame};
};

} // namespace zentrel
