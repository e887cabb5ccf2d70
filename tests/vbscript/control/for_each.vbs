Dim a, x
a = Array(1, 2, 3)
For Each x In a : x = x * 10 : Next
WScript.Echo a(0), a(2) ' -> 1 3
Dim m(1, 1)
m(0,0) = 1 : m(1,0) = 2 : m(0,1) = 3 : m(1,1) = 4
For Each x In m : WScript.Echo x : Next
' == 1
' == 2
' == 3
' == 4
Dim d : Set d = CreateObject("Scripting.Dictionary")
d.Add "k1", 1 : d.Add "k2", 2
For Each x In d : WScript.Echo x, d(x) : Next
' == k1 1
' == k2 2
On Error Resume Next
For Each x In 5
  WScript.Echo "body", Err.Number ' -> body 451
Next
WScript.Echo Err.Description ' -> Object not a collection
