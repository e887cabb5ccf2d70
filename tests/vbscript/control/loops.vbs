Dim i, s
For i = 1 To 3 : s = s & i : Next
WScript.Echo s, i ' -> 123 4
s = "" : For i = 10 To 1 Step -4 : s = s & i & "," : Next
WScript.Echo s ' -> 10,6,2,
s = "" : For i = 0 To 1 Step 0.25 : s = s & i & " " : Next
WScript.Echo Trim(s) ' -> 0 0.25 0.5 0.75 1
For i = 5 To 1 : WScript.Echo "never" : Next
WScript.Echo i ' -> 5
For i = 32766 To 32768 : Next
WScript.Echo i, TypeName(i) ' -> 32769 Long
i = 0
Do While i < 3 : i = i + 1 : Loop
WScript.Echo i ' -> 3
Do Until i = 0 : i = i - 1 : Loop
WScript.Echo i ' -> 0
Do : i = i + 1 : Loop While i < 5
WScript.Echo i ' -> 5
Do : i = i + 1 : Loop Until i > 5
WScript.Echo i ' -> 6
Do
  i = i + 1
  If i = 9 Then Exit Do
Loop
WScript.Echo i ' -> 9
While i > 7
  i = i - 1
Wend
WScript.Echo i ' -> 7
For i = 1 To 3
  For Each s In Array("a", "b", "c")
    If s = "b" Then Exit For
    WScript.Echo i & s
  Next
  If i = 2 Then Exit For
Next
' == 1a
' == 2a
' The loop's own variable may be changed inside.
For i = 1 To 10 : i = i + 4 : WScript.Echo i : Next
' == 5
' == 10
For i = "1" To "2" : WScript.Echo TypeName(i) : Next
' == Double
' == Double
' The bounds are read once.
Dim n : n = 2
For i = 1 To n : n = 10 : Next
WScript.Echo i ' -> 3
