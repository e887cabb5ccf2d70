' Dim and Const hold for the whole procedure, wherever they stand.
Dim x : x = "global"
Sub A
  x = "local"
  WScript.Echo x, c
  If False Then
    Dim x
    Const c = 7
  End If
End Sub
A ' -> local 7
WScript.Echo x ' -> global
Sub B
  On Error Resume Next
  arr(0) = 1
  WScript.Echo Err.Number, IsEmpty(arr)
  Err.Clear
  Dim arr(3)
  arr(0) = 1
  WScript.Echo Err.Number, UBound(arr)
End Sub
B
' == 13 True
' == 0 3
