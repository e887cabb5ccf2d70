' A class as people write them: a growing list, chains of members, arrays in fields.
Class Stack
  Private items(), n
  Private Sub Class_Initialize : ReDim items(1) : End Sub
  Public Sub Push(x)
    If n > UBound(items) Then ReDim Preserve items(n * 2)
    If IsObject(x) Then Set items(n) = x Else items(n) = x
    n = n + 1
  End Sub
  Public Function Pop
    n = n - 1
    If IsObject(items(n)) Then Set Pop = items(n) Else Pop = items(n)
  End Function
  Public Property Get Count : Count = n : End Property
  Public Function Chain : Set Chain = Me : End Function
  Public X
End Class
Dim s, i : Set s = New Stack
For i = 1 To 10 : s.Push i : Next
s.Push s
WScript.Echo s.Count, TypeName(s.Pop), s.Pop, s.Count ' -> 11 Stack 10 9
With s
  .Push "a"
  WScript.Echo .Pop ' -> a
End With
s.Chain.X = 5
s.Chain().X = s.Chain().X + 1
WScript.Echo s.X ' -> 6
s.X = Array(1, 2, 3)
s.X(1) = 20
WScript.Echo s.X(1), UBound(s.X) ' -> 20 2
Set s.X = s
WScript.Echo s.X.X.X.Count ' -> 9
Dim arr(2) : Set arr(1) = s
arr(1).Push "end" : WScript.Echo arr(1).Pop ' -> end
Set s.X = Nothing
Dim d : Set d = CreateObject("Scripting.Dictionary")
Set d("s") = New Stack
d("s").Push 3 : WScript.Echo d("s").Pop ' -> 3
d("arr") = Array(1, 2, 3) : WScript.Echo d("arr")(1) ' -> 2
