Dim a
Dim A ' !! 1041 Name redefined
