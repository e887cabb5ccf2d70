#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "transport/bridge_library.h"

/// What every bridge library has to keep. A test program includes this once and instantiates it
/// with its rows.
namespace zentrel {

using Bytes = std::vector<std::uint8_t>;

/// A library with a bridge that can be plugged and pulled.
struct BridgeUnderTest {
    virtual ~BridgeUnderTest() = default;
    virtual BridgeLibrary& library() = 0;
    virtual void SetPlugged(bool value) = 0;
    /// The bridge gets commands and doesn't answer.
    virtual void SetSilent(bool value) = 0;
};

struct BridgeRow {
    const char* name;
    std::function<std::unique_ptr<BridgeUnderTest>()> make;
};

class BridgeLibraryContract : public ::testing::TestWithParam<BridgeRow> {
  protected:
    std::unique_ptr<BridgeUnderTest> made = GetParam().make();
    BridgeLibrary& library = made->library();

    int Send(const Bytes& packet) {
        return library.usbSendCmdData(packet.data(), static_cast<std::int16_t>(packet.size()));
    }
    Bytes Receive(std::int16_t max) {
        Bytes bytes(static_cast<std::size_t>(max), 0xEE);
        const auto count = library.usbReceiveCmdData(bytes.data(), max);
        bytes.resize(static_cast<std::size_t>(count));
        return bytes;
    }
};

TEST_P(BridgeLibraryContract, nothing_moves_before_the_link_is_open) {
    EXPECT_NE(library.usbConnected(), 0);
    EXPECT_NE(library.usbGetError(), 0);
    EXPECT_EQ(Send({2, 10}), 0);
    EXPECT_EQ(Receive(100), Bytes{});
    library.InitUSBInterface();
    EXPECT_EQ(library.usbGetError(), 0);
    EXPECT_EQ(Send({2, 10}), 2);
}

TEST_P(BridgeLibraryContract, replies_come_in_order_as_far_as_there_is_room) {
    library.InitUSBInterface();
    Send({3, 19, 50});
    Send({3, 22, 0});
    EXPECT_EQ(Receive(2), (Bytes{3, 240}));
    EXPECT_EQ(Receive(100), (Bytes{19, 3, 240, 22}));
}

TEST_P(BridgeLibraryContract, a_pulled_bridge_is_an_error_until_it_is_opened_again) {
    library.InitUSBInterface();
    Send({3, 19, 50});
    made->SetPlugged(false);
    EXPECT_EQ(library.usbConnected(), 0);
    EXPECT_NE(library.usbGetError(), 0);
    EXPECT_EQ(Receive(100), Bytes{});
    library.InitUSBInterface();
    EXPECT_NE(library.usbGetError(), 0);
    made->SetPlugged(true);
    EXPECT_NE(library.usbGetError(), 0);
    library.InitUSBInterface();
    EXPECT_EQ(library.usbGetError(), 0);
    Send({3, 22, 0});
    EXPECT_EQ(Receive(100), (Bytes{3, 240, 22})) << "and no reply of before";
}

TEST_P(BridgeLibraryContract, a_time_out_is_an_error_until_the_link_is_opened_anew) {
    library.InitUSBInterface();
    made->SetSilent(true);
    Send({3, 19, 50});
    EXPECT_EQ(Receive(100), Bytes{});
    EXPECT_NE(library.usbGetError(), 0);
    made->SetSilent(false);
    EXPECT_EQ(Send({3, 22, 0}), 0);
    library.InitUSBInterface();
    Send({3, 22, 0});
    EXPECT_EQ(Receive(100), (Bytes{3, 240, 22}));
}

} // namespace zentrel
