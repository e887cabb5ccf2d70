Dim r : Set r = New RegExp
r.Pattern = "(\d+)-(\w)(x)?" : r.Global = True
Dim m, all : Set all = r.Execute("12-a 345-bx")
WScript.Echo all.Count, all(0), all(1).Value, all(1).FirstIndex, all(1).Length ' -> 2 12-a 345-bx 5 6
WScript.Echo all(1).SubMatches.Count, all(1).SubMatches(0), all.Item(1).SubMatches(2), IsEmpty(all(0).SubMatches(2)) ' -> 3 345 x True
For Each m In all : WScript.Echo m.Value : Next
' == 12-a
' == 345-bx
WScript.Echo r.Replace("1-a 2-b", "[$2$1$$]") ' -> [a1$] [b2$]
r.Global = False
WScript.Echo r.Replace("1-a 2-b", "<$&>"), r.Test("zz") ' -> <1-a> 2-b False
Sub Try(pattern, text)
  r.Pattern = pattern : r.Global = False
  Dim found : Set found = r.Execute(text)
  If found.Count = 0 Then WScript.Echo "none" Else WScript.Echo "[" & found(0) & "]"
End Sub
Try "a+?b", "aaab" ' -> [aaab]
Try "<.+?>", "<a><b>" ' -> [<a>]
Try "<.+>", "<a><b>" ' -> [<a><b>]
Try "^b", "ab" ' -> none
Try "\bfoo\b", "a foo b" ' -> [foo]
Try "(a)(b)\2\1", "abba" ' -> [abba]
Try "x{2,3}", "xxxx" ' -> [xxx]
Try "x{2}", "x" ' -> none
Try "x{,3}", "x{,3}" ' -> [x{,3}]
Try "[^a-c]+", "abcdef" ' -> [def]
Try "[\d.]+", "v1.25b" ' -> [1.25]
Try "a(?=b)", "acab" ' -> [a]
Try "a(?!b)", "abac" ' -> [a]
Try "(?:ab)+", "ababx" ' -> [abab]
Try "\x41\u0042", "xAB" ' -> [AB]
Try "(a*)*", "b" ' -> []
Try "(a|ab)(c|bcd)(d*)", "abcd" ' -> [abcd]
Try "colou?r|grey", "the grey" ' -> [grey]
Try "a.c", "a" & vbLf & "c" ' -> none
Try "\s\S", "a b" ' -> [ b]
Try "[\]x-]+", "a]x-b" ' -> []x-]
r.IgnoreCase = True
Try "HELLO[A-C]", "say hellob" ' -> [hellob]
r.Multiline = True : r.Global = True
r.Pattern = "^\w" : WScript.Echo r.Execute("a" & vbLf & "b").Count ' -> 2
r.Pattern = "x*" : WScript.Echo r.Replace("abc", "-") ' -> -a-b-c-
Sub Bad(pattern)
  On Error Resume Next
  r.Pattern = pattern : r.Test "x"
  WScript.Echo Err.Number
End Sub
Bad "*" ' -> 5018
Bad "a**" ' -> 5018
Bad "(a" ' -> 5020
Bad "[a" ' -> 5019
Bad "[b-a]" ' -> 5021
Bad "a)" ' -> 5017
