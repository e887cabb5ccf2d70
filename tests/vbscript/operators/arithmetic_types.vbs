Sub T(x) : WScript.Echo TypeName(x), x : End Sub
T 1 + 1 ' -> Integer 2
T 32767 + 1 ' -> Long 32768
T 2147483647 + 1 ' -> Double 2147483648
T CByte(200) + CByte(100) ' -> Integer 300
T CByte(200) * CByte(100) ' -> Long 20000
T CByte(1) - CByte(2) ' -> Integer -1
T CSng(1.5) + 1 ' -> Single 2.5
T CSng(1.5) + 100000 ' -> Double 100001.5
T CCur(1.5) + 1.25 ' -> Currency 2.75
T CCur(2) * 1.5 ' -> Currency 3
T CDate(1) + 1 ' -> Date 1/1/1900
T CDate(3) - CDate(1) ' -> Double 2
T CDate(2) * 2 ' -> Double 4
T "1" + 2 ' -> Double 3
T "1" + "2" ' -> String 12
T "3" - "1" ' -> Double 2
T IsNull(Null + 1) ' -> Boolean True
T IsNull(Null + "abc") ' -> Boolean True
T True + True ' -> Integer -2
T 4 / 2 ' -> Double 2
T CSng(1) / 4 ' -> Single 0.25
T CSng(1) / 100000 ' -> Double 0.00001
T 11.6 Mod 5.5 ' -> Long 0
T 4.6 \ 1.49 ' -> Long 5
T 7 \ 2 ' -> Integer 3
T True Mod 2 ' -> Integer -1
T 2 ^ 10 ' -> Double 1024
T -True ' -> Integer 1
T -CByte(1) ' -> Integer -1
T -"5" ' -> Double -5
T -Empty ' -> Integer 0
T +"true" ' -> String true
T Empty + 1 ' -> Integer 1
T Empty & 1 ' -> String 1
T 200 * 200 ' -> Long 40000
T 100000 * 100000 ' -> Double 10000000000
T -(-32768) ' -> Long 32768
T -CInt("-32768") ' -> Long 32768
