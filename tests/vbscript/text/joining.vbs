x = "a" & "b" & "c" : WScript.Echo x, Len(x) ' -> abc 3
Dim s, t : s = "1" : t = "2"
s = s & t & s & t : WScript.Echo s ' -> 1212
t = s & t : s = t & s : WScript.Echo s, t ' -> 121221212 12122
s = "q" : t = s : s = s & "r" : WScript.Echo s, t ' -> qr q
s = s & s : WScript.Echo s ' -> qrqr
s = s & s & s : WScript.Echo s ' -> qrqrqrqrqrqr
WScript.Echo 1 & 2 & 3 & Null & Empty & True ' -> 123True
Function Mutate : s = "new" : Mutate = "!" : End Function
s = "old" : s = s & Mutate & "." : WScript.Echo s ' -> new!.
