#include "partfile/part_definition.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/partfile/read_part.h"

namespace zentrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(PartDefaults, of_the_set_up) {
    const SetupSection setup = ReadPart("").setup;
    EXPECT_EQ(setup.version, "2.2.0");
    EXPECT_EQ(setup.commMode, "LPT");
    EXPECT_EQ(setup.registerLength, 24);
    EXPECT_EQ(setup.controlLength, 3);
    EXPECT_EQ(setup.address, 888);
    EXPECT_EQ(setup.clock, 1);
    EXPECT_EQ(setup.data, 2);
    EXPECT_EQ(setup.le, 3);
    EXPECT_FALSE(setup.invertClock);
    EXPECT_EQ(setup.partVersion, "a");
    EXPECT_EQ(setup.versionDescription, "No ini description");
    EXPECT_EQ(setup.readbackAddressRegister, "");
    EXPECT_EQ(setup.readbackAddressRegisterName, "");
}

TEST(PartDefaults, of_pins_and_registers) {
    const PartDefinition part = ReadPart("[PINS]\nCOUNT=2\n[REGISTERS]\nCOUNT=102\n");
    ASSERT_EQ(part.pins.size(), 2U);
    EXPECT_EQ(part.pins[1].name, "Pin01");
    EXPECT_EQ(part.pins[1].location, 4);
    EXPECT_FALSE(part.pins[1].enabled);
    EXPECT_FALSE(part.pins[1].readBack);
    ASSERT_EQ(part.registers.size(), 102U);
    EXPECT_EQ(part.registers[7].name, "Reg07");
    EXPECT_EQ(part.registers[101].name, "Reg101");
    EXPECT_EQ(part.registers[101].mask, 3);
    EXPECT_EQ(part.registers[101].value, 101);
    EXPECT_TRUE(part.registers[101].lowByte);
    EXPECT_THAT(part.problems, IsEmpty());
}

TEST(PartDefaults, of_blocks_modes_and_scripts) {
    const PartDefinition part =
        ReadPart("[PLLS]\nCOUNT=2\n[CLKDISTS]\nCOUNT=2\n[MODES]\nCOUNT=2\n[SCRIPTS]\nCOUNT=2\n");
    ASSERT_EQ(part.plls.size(), 2U);
    EXPECT_EQ(part.plls[1].name, "PLL01");
    EXPECT_EQ(part.plls[1].oscIn, 10);
    EXPECT_EQ(part.plls[1].n + part.plls[1].fractNum + part.plls[1].vcoMin, "");
    ASSERT_EQ(part.clkDists.size(), 2U);
    const ClkDistEntry& block = part.clkDists[1];
    EXPECT_EQ(block.name, "CLKDIST01");
    EXPECT_EQ(block.vcoCount, 1);
    EXPECT_EQ(block.clockCount, 0);
    EXPECT_THAT(block.channels, IsEmpty());
    EXPECT_EQ(block.displayType, "PLL_internalVCO");
    EXPECT_EQ(block.refOscFreq, 1);
    EXPECT_EQ(block.extSrcFreq, 2);
    EXPECT_EQ(block.intVcoFreq, 3);
    EXPECT_EQ(block.inputDivBypVal, -1);
    EXPECT_EQ(block.inputDivBypClearVal, -1);
    EXPECT_THAT(part.modes, ElementsAre("CAPTION00", "CAPTION01"));
    EXPECT_FALSE(part.executeScripts);
    ASSERT_EQ(part.scripts.size(), 2U);
    EXPECT_EQ(part.scripts[0].name, "");
    EXPECT_EQ(part.scripts[0].Code(), "\r\n"); // line 0
}

TEST(PartKeys, reach_their_places) {
    const PartDefinition part = ReadPart(R"([setup]
ZENTREL_VERSION=2.3.0
COMM_MODE=USB
REGISTER_LENGTH=32
CONTROL_LENGTH=4
ADDRESS=&H278
CLOCK=5
DATA=6
LE=7
INVERTCLOCK=true
VERSION=b
VERSION_DESCRIPTION="  third try"
READBACK_ADDR_REG=R15
READBACK_ADDR_REG_NAME=READ
[PINS]
COUNT=3
NAME00=CE
LOCATION00=10
ENABLED00=1
NAME01=LD
LOCATION01=1503
READBACK01=True
NAME02=SW
READBACK02=TRUE
[REGISTERS]
COUNT=1
NAME00=R0
MASK00=&H7
VALUE00=2.5E3
LOWBYTE00=0
[MODES]
COUNT=1
MODE00=Receive
[SCRIPTS]
EXECUTE_SCRIPTS=TRUE
COUNT=1
SCRIPTNAME000=Init
SCRIPTLINES000=2
Init00000=Sub A
Init00002=End Sub
)");
    EXPECT_EQ(part.setup.version, "2.3.0");
    EXPECT_EQ(part.setup.commMode, "USB");
    EXPECT_EQ(part.setup.registerLength, 32);
    EXPECT_EQ(part.setup.controlLength, 4);
    EXPECT_EQ(part.setup.address, 0x278);
    EXPECT_EQ(part.setup.clock, 5);
    EXPECT_EQ(part.setup.data, 6);
    EXPECT_EQ(part.setup.le, 7);
    EXPECT_TRUE(part.setup.invertClock);
    EXPECT_EQ(part.setup.partVersion, "b");
    EXPECT_EQ(part.setup.versionDescription, "  third try");
    EXPECT_EQ(part.setup.readbackAddressRegister, "R15");
    EXPECT_EQ(part.setup.readbackAddressRegisterName, "READ");
    ASSERT_EQ(part.pins.size(), 3U);
    EXPECT_EQ(part.pins[0].name, "CE");
    EXPECT_EQ(part.pins[0].location, 10);
    EXPECT_TRUE(part.pins[0].enabled);
    EXPECT_TRUE(part.pins[1].readBack);
    EXPECT_EQ(part.pins[1].location, 1503);
    EXPECT_FALSE(part.pins[2].readBack); // only "True" makes a read-back pin
    ASSERT_EQ(part.registers.size(), 1U);
    EXPECT_EQ(part.registers[0].mask, 7);
    EXPECT_EQ(part.registers[0].value, 2500);
    EXPECT_FALSE(part.registers[0].lowByte);
    EXPECT_THAT(part.modes, ElementsAre("Receive"));
    EXPECT_TRUE(part.executeScripts);
    ASSERT_EQ(part.scripts.size(), 1U);
    EXPECT_EQ(part.scripts[0].lastLine, 2);
    EXPECT_EQ(part.scripts[0].Code(), "Sub A\r\n\r\nEnd Sub\r\n");
    EXPECT_THAT(Told(part), IsEmpty());
}

} // namespace
} // namespace zentrel
