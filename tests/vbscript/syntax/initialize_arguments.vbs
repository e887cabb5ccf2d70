WScript.Echo "never"
Class C : Sub Class_Initialize(a) : End Sub : End Class ' !! 1053 Class initialize or terminate do not have arguments
