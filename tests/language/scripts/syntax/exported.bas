Attribute VB_Name = "Exported"
Option Explicit
' What an exported module says of itself and of its procedures is no code.
Function Half(ByVal number As Double) As Double
Attribute Half.VB_Description = "The half of it."
Attribute Half.VB_ProcData.VB_Invoke_Func = " \n14"
    Half = number / 2
End Function
Sub main()
    Attribute main.VB_Description = "Prints: one line"
    Debug.Print Half(5) ' expect:  2.5
End Sub
