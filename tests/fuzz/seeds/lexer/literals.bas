x = 1.5e-3# + &HFFFF& - &O17 * 2@ / 3! \ 4% ^ "a""b" & #3/5/2018 2:07:09 PM#
Name$ = [My Name]: y% = Chr$(65) _
  & "z" ' comment
Rem another
