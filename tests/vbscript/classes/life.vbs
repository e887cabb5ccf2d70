' Objects end at the last release, at once.
Class T
  Public Name
  Private Sub Class_Initialize : WScript.Echo "init" : End Sub
  Private Sub Class_Terminate : WScript.Echo "end " & Name : End Sub
End Class
Dim a, b
Set a = New T ' -> init
a.Name = "one"
Set b = a
Set a = Nothing
WScript.Echo "still" ' -> still
Set b = Nothing ' -> end one
Sub S
  Dim t : Set t = New T : t.Name = "local"
  WScript.Echo "leaving"
End Sub
S
' == init
' == leaving
' == end local
' A temporary ends as soon as it is used up.
Function Make(n) : Set Make = New T : Make.Name = n : End Function
WScript.Echo Make("temp").Name
' == init
' == end temp
' == temp
Dim arr(1)
Set arr(0) = Make("elem") ' -> init
arr(0) = 5 ' -> end elem
Dim d : Set d = CreateObject("Scripting.Dictionary")
d.Add 1, Make("item") ' -> init
d.RemoveAll ' -> end item
' Objects in a circle end with the engine, and the live ones too.
Class Node : Public Other
  Private Sub Class_Terminate : WScript.Echo "node ends" : End Sub
End Class
Dim n1, n2
Set n1 = New Node : Set n2 = New Node
Set n1.Other = n2 : Set n2.Other = n1
Set n1 = Nothing : Set n2 = Nothing
WScript.Echo "over" ' -> over
' == node ends
' == node ends
