' What is no call and no element.
Class C
  Public F
  Public Property Get P : P = 3 : End Property
End Class
Dim o, x, s, q(1, 1)
Set o = New C : o.F = 5 : s = "abc"
Sub Told : WScript.Echo Err.Number : Err.Clear : End Sub
WScript.Echo o.P() ' -> 3
On Error Resume Next
x = s() : Told ' -> 13
x = q() : Told ' -> 9
x = q(0) : Told ' -> 9
x = q(0, 2) : Told ' -> 9
x = s(0) : WScript.Echo Err.Number, Err.Description ' -> 13 Type mismatch: 's'
Err.Clear
x = o.F(1) : Told ' -> 13
Function Five : Five = 5 : End Function
x = Five(1) : Told ' -> 450
If "" Then WScript.Echo "entered" ' -> entered
Told ' -> 13
