Sub Tell(x)
  If x < 0 Then
    WScript.Echo "neg"
  ElseIf x = 0 Then
    WScript.Echo "zero"
  Else
    WScript.Echo "pos"
  End If
End Sub
Tell -1 ' -> neg
Tell 0 ' -> zero
Tell 1 ' -> pos
If True Then WScript.Echo "a" : WScript.Echo "b" Else WScript.Echo "c"
' == a
' == b
If False Then WScript.Echo "a" : WScript.Echo "b" Else WScript.Echo "c" ' -> c
If True Then If False Then WScript.Echo 1 Else WScript.Echo 2 ' -> 2
If True Then WScript.Echo "end" End If ' -> end
If False Then
ElseIf True Then WScript.Echo "one line" End If
' == one line
If False Then
Else WScript.Echo "else line" End If
' == else line
Select Case 5
  Case 1, 2, 3 : WScript.Echo "low"
  Case 4, 5 WScript.Echo "mid" ' -> mid
  Case Else : WScript.Echo "high"
End Select
Select Case "x" : Case "X" : WScript.Echo "upper" : Case "x" : WScript.Echo "lower" : End Select ' -> lower
