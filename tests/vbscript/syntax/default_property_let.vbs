WScript.Echo "never"
Class C : Public Default Property Let x(y) : End Property : End Class ' !! 1058 'Default' can only be on Property Get
