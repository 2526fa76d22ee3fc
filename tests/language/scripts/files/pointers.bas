' A path outside the code page reaches files and declared functions as a pointer.
Option Explicit
#If VBA7 Then
Private Declare PtrSafe Function PathIsRelative Lib "shlwapi.dll" Alias "PathIsRelativeW" (ByVal pszPath As LongPtr) As Long
#Else
Private Declare Function PathIsRelative Lib "shlwapi.dll" Alias "PathIsRelativeW" (ByVal pszPath As Long) As Long
#End If
Declare PtrSafe Function CountUnits Lib "test" Alias "CountUnitsW" (ByVal text As LongPtr, ByRef count As Long) As Boolean
Declare PtrSafe Function Missing Lib "test" (Optional ByVal text As Any) As Long
Sub main()
    Dim path As String, n As Long, ok As Boolean
    path = "C:\" & ChrW(26085) & ChrW(26412) & ".log"
    Open StrPtr(path) For Append As #1
    Print #1, "written"
    Close #1
    Debug.Print Dir(StrPtr(path)) = Mid(path, 4); FileLen(StrPtr(path)) ' expect: True 9
    Debug.Print PathIsRelative(StrPtr(path)); PathIsRelative(StrPtr("a\b")); PathIsRelative(0) ' expect:  0  1  1
    ok = CountUnits(StrPtr(path), n)
    Debug.Print ok; n; StrPtr(path) = StrPtr(path) ' expect: True 9 True
    Kill StrPtr(path)
    Debug.Print Dir(StrPtr(path)) = "" ' expect: True
    On Error Resume Next
    n = Missing("x")
    Debug.Print Err.Number; Err.Description ' expect:  438 There is no function Missing
End Sub
