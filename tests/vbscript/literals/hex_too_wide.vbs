x = &H1FFFFFFFF ' !! 1002 Syntax error
