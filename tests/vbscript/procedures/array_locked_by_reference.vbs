' While an element is lent out, its array keeps its shape.
Dim d() : ReDim d(2)
Sub Resize(element)
  ReDim d(5) ' !! 10 This array is fixed or temporarily locked
End Sub
Call Resize((d(1)))
WScript.Echo UBound(d) ' -> 5
Resize d(1)
