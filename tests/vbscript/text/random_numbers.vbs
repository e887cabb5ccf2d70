WScript.Echo Rnd(0) * 16777216 ' -> 327680
WScript.Echo Rnd ' -> 0.7055475
WScript.Echo Rnd ' -> 0.533424
WScript.Echo Rnd(1), TypeName(Rnd(0)) ' -> 0.5795186 Single
Dim a : a = Rnd(-1)
WScript.Echo a, a = Rnd(0), a = Rnd(-1) ' -> 0.224007 True True
Rnd -1 : Randomize 5 : a = Rnd
Rnd -1 : Randomize 5 : WScript.Echo a = Rnd ' -> True
