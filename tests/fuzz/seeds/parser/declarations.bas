Option Explicit
Option Base 1
Private Declare PtrSafe Function F Lib "a.dll" Alias "G" (ByVal x As LongPtr) As Long
Const c As Long = 1 + 2
Enum E
  a = 1
  b
End Enum
Type T
  x(1 To 3) As Integer
  s As String * 5
End Type
Dim g(1 To 2, 3) As T, h As New Collection
Public Function Sum(ParamArray all() As Variant) As Double
End Function
Sub main(Optional a As Long = 3, Optional ByRef b)
Static n%
End Sub
