WScript.Echo "never"
Class C : Public Default Sub a : End Sub : Public Default Sub b : End Sub : End Class ' !! 1052 Cannot have multiple default property/method in a Class
