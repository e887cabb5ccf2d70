WScript.Echo "never"
Class C : Property Let x() : End Property : End Class ' !! 1054 Property set or let must have at least one argument
