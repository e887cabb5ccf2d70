' Subtypes and values of number literals.
Sub Show(x) : WScript.Echo TypeName(x), x : End Sub
Show 0 ' -> Integer 0
Show 32767 ' -> Integer 32767
Show 32768 ' -> Long 32768
Show -32768 ' -> Long -32768
Show 2147483647 ' -> Long 2147483647
Show 2147483648 ' -> Double 2147483648
Show 0000007 ' -> Integer 7
Show 10. ' -> Double 10
Show .5 ' -> Double 0.5
Show 34E1 ' -> Double 340
Show 1e-400 ' -> Double 0
Show 1.5e+3 ' -> Double 1500
Show &HFFFF ' -> Integer -1
Show &H8001 ' -> Integer -32767
Show &H8000 ' -> Long -32768
Show &h10& ' -> Integer 16
Show &HFFFF& ' -> Long 65535
Show &hFFFFFFFF& ' -> Integer -1
Show &H10000 ' -> Long 65536
Show &H0000000000000FF ' -> Integer 255
Show &O17 ' -> Integer 15
Show &o177777 ' -> Integer -1
Dim hi : hi = "there"
WScript.Echo "x" &hi ' -> xthere
Show 1 & 100000 ' -> String 1100000
