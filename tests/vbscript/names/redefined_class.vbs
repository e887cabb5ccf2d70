Class C : End Class
Const x = 1
Class c : End Class ' !! 1041 Name redefined
