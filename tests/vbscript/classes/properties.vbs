Class C
  Private v, o, list
  Public Property Get Val : Val = v : End Property
  Public Property Let Val(x) : WScript.Echo "let" : v = x : End Property
  Public Property Set Obj(x) : WScript.Echo "set" : Set o = x : End Property
  Public Property Get Obj : Set Obj = o : End Property
  Public Property Let At(i, x) : v = v & i & "=" & x & ";" : End Property
  Public Property Get At(i) : At = "at" & i : End Property
  Public Default Property Get Item(k) : Item = "item " & k : End Property
  Public Sub Inside : Val = 9 : WScript.Echo Val, Me.Val : End Sub
  Public Function Self : Set Self = Me : End Function
End Class
Dim a : Set a = New C
a.Val = 5 ' -> let
WScript.Echo a.Val ' -> 5
Set a.Obj = a ' -> set
WScript.Echo a.Obj Is a ' -> True
a.At(1) = "x" : a.At(2) = "y"
WScript.Echo a.Val, a.At(3) ' -> 51=x;2=y; at3
WScript.Echo a("k"), a.Item("j") ' -> item k item j
a.Inside
' == let
' == 9 9
WScript.Echo a.Self.Self.Val ' -> 9
WScript.Echo TypeName(a), TypeName(Nothing), IsObject(a) ' -> C Nothing True
Set a.Obj = Nothing ' -> set
' Property Let is handed an object as it is.
Class L
  Public Property Let P(x) : WScript.Echo TypeName(x) : End Property
End Class
Dim q : Set q = New L
q.P = a ' -> C
Set q.P = a ' !! 438 Object doesn't support this property or method: 'P'
