Class P
  Public X, Y
  Public Function Sum : Sum = X + Y : End Function
End Class
Dim p1 : Set p1 = New P
With p1
  .X = 3 : .Y = 4
  WScript.Echo .Sum, .X * .Y ' -> 7 12
  With New P
    .X = 10
    WScript.Echo .X ' -> 10
  End With
  WScript.Echo .X ' -> 3
End With
x = .foo ' !! 505 Invalid or unqualified reference
