Sub T(x)
  If IsNull(x) Then WScript.Echo "Null" Else WScript.Echo TypeName(x), x
End Sub
T False And Null ' -> Boolean False
T True And Null ' -> Null
T True Or Null ' -> Boolean True
T False Or Null ' -> Null
T False Imp Null ' -> Boolean True
T Null Imp True ' -> Boolean True
T Null Xor True ' -> Null
T 0 And Null ' -> Integer 0
T Empty And Null ' -> Long 0
T "5" And 3 ' -> Long 1
T "true" Or False ' -> Boolean True
T Not Empty ' -> Long -1
T Not 5 ' -> Integer -6
T Not True ' -> Boolean False
T 5 And True ' -> Integer 5
T 70000 And 1 ' -> Long 0
If Null Then WScript.Echo "yes" Else WScript.Echo "no" ' -> no
While Null : WScript.Echo "never" : Wend
On Error Resume Next
x = "abc" And 1
WScript.Echo Err.Number ' -> 13
