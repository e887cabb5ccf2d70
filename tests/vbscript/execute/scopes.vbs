' Execute runs where it is called, ExecuteGlobal in the module.
Dim g : g = 1
Sub S(p)
  Dim l : l = 5
  Execute "l = l + p : g = g + 1 : Dim own : own = ""mine"""
  WScript.Echo l, g
  Execute "WScript.Echo own"
  WScript.Echo Eval("l * 2 + p")
  ExecuteGlobal "Dim made : made = 3"
  Execute "fresh = 8"
  WScript.Echo fresh, Eval("fresh")
End Sub
S 2
' == 7 2
' == mine
' == 16
' == 8 8
WScript.Echo made, IsEmpty(own), IsEmpty(fresh) ' -> 3 True True
Dim a : a = 1
WScript.Echo Eval("a = 1"), Eval("a = 2"), a ' -> True False 1
WScript.Echo Eval(42) ' -> 42
Execute "Sub Defined : WScript.Echo ""defined"" : End Sub"
Defined ' -> defined
ExecuteGlobal "Class Made : Public V : End Class"
Dim o : Set o = Eval("New Made") : o.V = 3 : WScript.Echo o.V ' -> 3
Class C
  Private v
  Public Sub Test : v = 4 : Execute "v = v + 1 : WScript.Echo v, Me.Twice(v)" : End Sub
  Public Function Twice(x) : Twice = x * 2 : End Function
End Class
Set o = New C : o.Test ' -> 5 10
Execute "Option Explicit : Dim q : q = 1 : WScript.Echo q" ' -> 1
unknown = 2 : WScript.Echo unknown ' -> 2
Dim again(2)
On Error Resume Next
ExecuteGlobal "Dim again(3)" : WScript.Echo Err.Number, UBound(again) ' -> 13 2
Err.Clear
Execute 5 : WScript.Echo Err.Number ' -> 13
Err.Clear
Execute "x = " : WScript.Echo Err.Number, Err.Description ' -> 1023 Expected expression
Err.Clear
x = Eval("1 +") : WScript.Echo Err.Number ' -> 1023
Err.Clear
Set f = GetRef("nowhere") : WScript.Echo Err.Number ' -> 5
