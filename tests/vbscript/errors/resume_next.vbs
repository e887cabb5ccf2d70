' Where a script goes on when something fails.
On Error Resume Next
If 1 / 0 Then
  WScript.Echo "if entered" ' -> if entered
Else
  WScript.Echo "else"
End If
If False Then
ElseIf 1 / 0 Then
  WScript.Echo "elseif entered" ' -> elseif entered
End If
If 1 / 0 Then WScript.Echo "one line" ' -> one line
Do While 1 / 0
  WScript.Echo "do entered" ' -> do entered
  Exit Do
Loop
Select Case 1
  Case 1 / 0 : WScript.Echo "case entered" ' -> case entered
  Case 1 : WScript.Echo "case 1"
End Select
Select Case 1 / 0
  Case 1 : WScript.Echo "never"
  Case Else : WScript.Echo "never"
End Select
WScript.Echo "after select" ' -> after select
Dim i : i = "untouched" : Err.Clear
For i = 1 / 0 To 3
  WScript.Echo "for body", i, Err.Number ' -> for body untouched 11
Next
WScript.Echo Err.Number, i ' -> 92 untouched
Err.Clear
For i = 1 To "x"
  WScript.Echo "body" ' -> body
Next
WScript.Echo Err.Number ' -> 92
Err.Clear
With 1 / 0
  WScript.Echo "with body", Err.Number ' -> with body 11
  .x = 1
  WScript.Echo Err.Number ' -> 424
End With
Do
  WScript.Echo "loop body" ' -> loop body
Loop While 1 / 0
WScript.Echo "left" ' -> left
Do
  WScript.Echo "until body" ' -> until body
Loop Until 1 / 0
WScript.Echo "left too" ' -> left too
Dim n : n = 0
For i = 1 To 3 : n = n + 1 / (i - 2) : Next
WScript.Echo n, i ' -> 0 4
If True Then
  x = 1 / 0
Else
  WScript.Echo "not here"
End If
WScript.Echo "done" ' -> done
