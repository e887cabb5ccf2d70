Function Deep(x)
  If x > 0 Then
    Deep = Deep(x - 1)
  Else
    Deep = 1 / x ' !! 11 Division by zero
  End If
End Function
WScript.Echo "go" ' -> go
Deep 3
