' A procedure without a handler goes back to its caller's next statement.
Sub Bad
  WScript.Echo "in"
  x = 1 / 0
  WScript.Echo "never"
End Sub
Sub Middle : Bad : WScript.Echo "never" : End Sub
On Error Resume Next
Middle : WScript.Echo "next", Err.Number
' == in
' == next 11
Sub Handles
  On Error Resume Next
  y = 1 / 0
  WScript.Echo "handled", Err.Number
  On Error GoTo 0
End Sub
On Error GoTo 0
Handles ' -> handled 11
WScript.Echo Err.Number ' -> 0
Function F : F = 1 / 0 : End Function
On Error Resume Next
Dim r : r = "old"
r = F
WScript.Echo r ' -> old
