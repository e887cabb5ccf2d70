Dim a, b : a = 1: b = 2 : WScript.Echo a + _
  b ' -> 3
Rem a comment : WScript.Echo "never"
WScript.Echo "x" : Rem behind a colon
' == x
:: WScript.Echo "colons" :: ' -> colons
Sub OneLine : WScript.Echo "one" End Sub
OneLine ' -> one
Function F(x) F = x * 2 End Function
WScript.Echo F(4) ' -> 8
Class C : Public Function G : G = 1 End Function End Class
Dim o : Set o = New C : WScript.Echo o.G ' -> 1
Call OneLine ' -> one
Call OneLine() ' -> one
OneLine() ' -> one
If a = 1 Then:WScript.Echo "colon then" ' -> colon then
WScript.Echo 1 =< 2, 2 => 1, 1 >< 2 ' -> True True True
Stop
Public pub : pub = 3
Private Const K = 4
WScript.Echo pub, K ' -> 3 4
WSCRIPT.ECHO "case" ' -> case
Public Sub P() : WScript.Echo "public sub" : End Sub
P ' -> public sub
