Function Twice(n) : Twice = n * 2 : End Function
WScript.Echo Twice(4), Twice(Twice(1)) ' -> 8 4
' The name inside is the result; with brackets it is a call.
Function Count(n)
  Count = 0
  If n > 0 Then Count = Count + 1 + Count(n - 1)
End Function
WScript.Echo Count(5) ' -> 5
Function Depth
  Depth = Depth + 1
  If Depth < 2 Then Depth = 10
End Function
WScript.Echo Depth ' -> 10
Dim calls
Function Again
  calls = calls + 1
  If calls < 4 Then Again()
  Again = calls
End Function
WScript.Echo Again ' -> 4
Function Nothing1 : End Function
WScript.Echo IsEmpty(Nothing1) ' -> True
Function GiveArray : GiveArray = Array(1, 2, 3) : End Function
WScript.Echo GiveArray()(1) ' -> 2
' A function is used before it is written.
WScript.Echo Later(1) ' -> 2
Function Later(x) : Later = x + 1 : End Function
' The last of several wins.
WScript.Echo Which ' -> second
Function Which : Which = "first" : End Function
Function Which : Which = "second" : End Function
Sub S : Exit Sub : WScript.Echo "never" : End Sub
S
Function F : F = 1 : Exit Function : F = 2 : End Function
WScript.Echo F ' -> 1
WScript.Echo TypeName(GetRef("F")), GetRef("Twice")(21) ' -> Object 42
Dim r : Set r = GetRef("Twice")
WScript.Echo r(5) ' -> 10
