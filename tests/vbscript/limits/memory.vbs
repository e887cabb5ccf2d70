On Error Resume Next
Sub Told : WScript.Echo Err.Number, Err.Description : Err.Clear : End Sub
ReDim a(2000000000) : Told ' -> 7 Out of memory
ReDim a(100000, 100000) : Told ' -> 7 Out of memory
s = String(2000000000, "x") : Told ' -> 7 Out of memory
s = "0123456789"
Do While Err.Number = 0 : s = s & s : Loop
Told ' -> 7 Out of memory
s = ""
' A list of many nodes ends without recursion.
Class Node : Public Nxt : End Class
Dim head, n, i
For i = 1 To 200000
  Set n = New Node : Set n.Nxt = head : Set head = n
Next
Set n = Nothing : Set head = Nothing
WScript.Echo "freed" ' -> freed
Dim nest : nest = 0
For i = 1 To 100000 : nest = Array(nest) : Next
nest = 0
WScript.Echo "unnested" ' -> unnested
