Class C
  Public Sub f : End Sub
  Public Function F : End Function ' !! 1041 Name redefined
End Class
