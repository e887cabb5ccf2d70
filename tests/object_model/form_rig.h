#pragma once

#include <string>
#include <utility>
#include <vector>

#include "automation/object_model/classes.h"
#include "device/part.h"
#include "synth/pll.h"
#include "tests/session/window.h"

namespace zentrel::objects {

/// A PLL and a clock block of two channels that it drives, with all paths on the screen.
inline constexpr const char* kConditioner = R"(COMM_MODE=LPT
REGISTER_LENGTH=32
CONTROL_LENGTH=2
CLOCK=1
DATA=2
LE=3
[PINS]
COUNT=1
NAME00=CE
LOCATION00=10
ENABLED00=True
[REGISTERS]
COUNT=2
NAME00=R0
VALUE00=0
MASK00=3
NAME01=R1
VALUE01=1
MASK01=3
[BITS]
COUNT=10
REG00=R0
NAME00=N
POS00=2
LEN00=14
REG01=R0
NAME01=R
POS01=16
LEN01=8
REG02=R0
NAME02=ENABLE
POS02=24
LEN02=1
DISPLAY02=True
TYPE02=Bit
REG03=R0
NAME03=GAIN
POS03=25
LEN03=2
DISPLAY03=True
TYPE03=List
COUNT03=3
FORMAT03=String
VAL0300=Low
VAL0301=Middle
VAL0302=High
REG04=R1
NAME04=MODE
POS04=2
LEN04=3
REG05=R1
NAME05=INPUT_MUX
POS05=5
LEN05=2
REG06=R1
NAME06=VCO_DIV
POS06=7
LEN06=4
REG07=R1
NAME07=MUX0
POS07=11
LEN07=2
COUNT07=2
FORMAT07=String
VAL0700=Bypassed
VAL0701=Divided
REG08=R1
NAME08=MUX1
POS08=13
LEN08=2
COUNT08=2
FORMAT08=String
VAL0800=Bypassed
VAL0801=Divided
REG09=R1
NAME09=DLY
POS09=15
LEN09=1
COUNT09=2
FORMAT09=String
VAL0900=0 ps
VAL0901=150 ps
[PLLS]
COUNT=1
NAME00=Loop
N00=N
R00=R
OSCIN00=10
[CLKDISTS]
COUNT=1
NAME00=Clocks
Clocks00=2
PLL00=Loop
DISPLAY_TYPE00=Engineering
RefOSC_Freq00=10
ExtSRC_Freq00=1000
IntVCO_Freq00=1200
INPUT_DIV00=VCO_DIV
INPUT_MUX00=INPUT_MUX
CLK_DELAY_0000=DLY
CLK_MUX_0000=MUX0
CLK_DELAY_0100=DLY
CLK_MUX_0100=MUX1
)";

/// The window with that device, used as an outsider uses it: by names.
class FormRig {
  public:
    FormRig() : window(folder) {
        folder.WritePart("Conditioner", kConditioner);
        folder.WritePart("Plain", "REGISTER_LENGTH=24\n");
        window.Start();
        window.Load("Conditioner");
    }

    ObjectRef Element(const std::string& name) { return Object(Read(form, name)); }
    ObjectRef Element(const std::string& name, int index) {
        return Object(Read(form, name, {Value(index)}));
    }
    Value Call(const std::string& routine, std::vector<Value> arguments = {}) {
        return Read(form, routine, std::move(arguments));
    }
    static ObjectRef Object(const Value& value) {
        const auto* object = value.If<ObjectRef>();
        return object != nullptr ? *object : ObjectRef();
    }

    window::Folder folder;
    window::Window window;
    cPart& part = window.part;
    FrmPart& frm = window.frm;
    ObjectRef form = RefTo(window.frm);
};

} // namespace zentrel::objects
