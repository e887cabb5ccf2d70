Sub Local : v = 5 : WScript.Echo v : End Sub
Local ' -> 5
WScript.Echo IsEmpty(v) ' -> True
' A name that the module has by then is the module's.
w = 1
Sub Global1 : w = 6 : End Sub
Global1 : WScript.Echo w ' -> 6
Sub Parameter(w) : w = 9 : End Sub
Parameter 1 : WScript.Echo w ' -> 6
ReDim made(2)
WScript.Echo UBound(made) ' -> 2
Sub MakeLocal : ReDim own(4) : WScript.Echo UBound(own) : End Sub
MakeLocal ' -> 4
[my name] = 3 : WScript.Echo [my name], [MY NAME] ' -> 3 3
' Words that are names as well.
Dim Default, Error, Explicit, Step, Property
Default = 1 : Error = 2 : Explicit = 3 : Step = 4 : Property = 5
WScript.Echo Default + Error + Explicit + Step + Property ' -> 15
For Step = 1 To 3 Step 2 : WScript.Echo Step : Next
' == 1
' == 3
Dim [If] : [If] = "kw" : WScript.Echo [if] ' -> kw
Class K : Public [End] : Public [Next] : End Class
Dim k1 : Set k1 = New K : k1.End = 1 : k1.Next = 2 : WScript.Echo k1.End + k1.next ' -> 3
