Dim a
Sub a : End Sub ' !! 1041 Name redefined
