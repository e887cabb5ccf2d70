Function Down(n) : Down = Down(n + 1) : End Function
On Error Resume Next
x = Down(0)
WScript.Echo Err.Number, Err.Description ' -> 28 Out of stack space
Err.Clear
Class C
  Public Default Function V : V = Me + 1 : End Function
End Class
Dim c1 : Set c1 = New C
x = c1 + 1
WScript.Echo Err.Number ' -> 28
Err.Clear
Dim again : again = "Execute again"
Execute again
WScript.Echo Err.Number ' -> 28
Err.Clear
' Deep but not endless.
Function Sum(n)
  If n = 0 Then Sum = 0 Else Sum = n + Sum(n - 1)
End Function
WScript.Echo Sum(5000) ' -> 12502500
