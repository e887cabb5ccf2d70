x = 1e309 ' !! 1031 Invalid number
