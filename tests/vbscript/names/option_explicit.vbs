Option Explicit
Dim a : a = 1
WScript.Echo a, vbTab = Chr(9) ' -> 1 True
On Error Resume Next
b = 2 : WScript.Echo Err.Number, Err.Description ' -> 500 Variable is undefined: 'b'
On Error GoTo 0
Sub S
  Dim c : c = 1
  d = c ' !! 500 Variable is undefined: 'd'
End Sub
S
