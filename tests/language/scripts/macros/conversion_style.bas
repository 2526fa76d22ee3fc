'A macro in the manner of those that tasks run: everything that such a macro uses of the language, in one flow.
'--------------------------------------------------------------------------------------------------------------
Option Explicit

Dim znApp As Object
Dim znModel As Zentrel.ModelDoc2
Dim FileSystemObj As Object
Dim errors As Long
Dim warnings As Long
Dim Is3dPDF As Boolean

#If VBA7 Then
Private Declare PtrSafe Function SHCreateDirectoryEx Lib "shell32" Alias "SHCreateDirectoryExW" (ByVal hwnd As LongPtr, ByVal pszPath As LongPtr, ByVal psa As Any) As Long
Private Declare PtrSafe Function PathIsRelative Lib "shlwapi.dll" Alias "PathIsRelativeW" (ByVal pszPath As LongPtr) As Long
#Else
Private Declare Function SHCreateDirectoryEx Lib "shell32" Alias "SHCreateDirectoryExW" (ByVal hwnd As Long, ByVal pszPath As Long, ByVal psa As Any) As Long
Private Declare Function PathIsRelative Lib "shlwapi.dll" Alias "PathIsRelativeW" (ByVal pszPath As Long) As Long
#End If

Function PathAppend(path As String, more As String) As String
    If Right(path, 1) <> "\" Then path = path & "\"
    If Left(more, 1) = "\" Then more = Mid(more, 2)
    PathAppend = path & more
End Function

Sub Log(message As String)
    Dim folder As String
    folder = "logs"
    If Left(folder, 1) = "\" Then folder = Right(folder, Len(folder) - 1)
    If PathIsRelative(StrPtr(folder)) <> 0 Then folder = PathAppend("C:", folder)
    On Error Resume Next
    MkDir folder
    On Error GoTo 0
    folder = PathAppend(folder, "{1-2}.log")
    Open StrPtr(folder) For Append As #1
    Print #1, message
    Close #1
End Sub

Sub KillHolder(path As String)
    On Error Resume Next
    If FileSystemObj.FileExists(path & "~$holder") Then FileSystemObj.DeleteFile path & "~$holder"
End Sub

Function GetExtension(docType As Long, fileFormat As String) As String
    Dim open1 As Long, close1 As Long, inner As String, parts As Variant
    open1 = InStr(fileFormat, "(")
    close1 = InStr(open1, fileFormat, ")")
    Is3dPDF = (Left(fileFormat, open1 - 1) = "3D PDF - MBD ")
    inner = Mid(fileFormat, open1 + 1, close1 - open1 - 1)
    If InStr(inner, ";") > 0 Then
        parts = Split(inner, ";")
        If UBound(parts) >= docType - 1 Then inner = parts(docType - 1) Else inner = "*."
    End If
    GetExtension = Mid(Trim(inner), 2)
End Function

Function GetFullFileName(convFileName As String, ByVal conf As String, i As Integer, itemCount As Integer) As String
    Dim result As String, pos As Long, bad As Variant
    conf = Replace(Replace(conf, "\", ""), "/", "")
    result = Replace(convFileName, "<Configuration>", conf)
    If result = convFileName And itemCount > 0 Then
        pos = InStrRev(result, ".")
        result = Left(result, pos - 1) & "_" & i & Mid(result, pos)
    End If
    For Each bad In Array("<", ">", "*", "?", """", "|")
        result = Replace(result, bad, "")
    Next
    GetFullFileName = Left(result, 2) & Replace(Mid(result, 3), ":", "")
End Function

Function bIsSupportedExtension(oExtension As String) As Boolean
    bIsSupportedExtension = False
    Select Case LCase(oExtension)
        Case "prt", "asm", "drw", _
             "step", "stp"
            bIsSupportedExtension = True
    End Select
End Function

Sub SelectNames(vNames As Variant, pattern As String)
    Dim i As Integer, count As Integer
    count = 0
    For i = 0 To UBound(vNames)
        If vNames(i) Like pattern Then
            vNames(count) = vNames(i)
            count = count + 1
        End If
    Next i
    If count > 0 Then
        ReDim Preserve vNames(count - 1)
    Else
        vNames = Empty
    End If
End Sub

Sub Convert(docFileName As String)
    Const OUTSHEETS = "8"
    Dim vNames As Variant, i As Integer, saveOpts As Long, dAlign(0 To 11) As Double
    Dim bOk As Boolean, target As String, warnings1 As String
    Set znModel = znApp
    vNames = Array("Default", "Large A", "Large B", "x/y")
    If (OUTSHEETS And 8) = 8 Then SelectNames vNames, "Large*"
    If IsEmpty(vNames) Then
        Log "nothing"
        GoTo CleanUp
    End If
    saveOpts = 1 Or 8
    For i = 0 To UBound(vNames)
        target = GetFullFileName("C:\out\part.step", CStr(vNames(i)), i, UBound(vNames))
        bOk = znModel.Open(target, errors, warnings1)
        Debug.Print target; bOk; errors
        If bOk = True And (errors And 4096) Then Log "Method call for document '" & target & "' failed. Error code " & errors & " returned."
    Next
    #If ("False") Then
    znModel.Unsupported
    #Else
    Debug.Print "Unsupported ZENTREL version found on the task host "
    #End If
    dAlign(3) = 1
    If Val(Left("26.5.0", 2)) >= 18 Then znModel.KeepInVisible = True
CleanUp:
    KillHolder "C:\out\"
    Debug.Print znModel.KeepInVisible
    Err.Raise vbObjectError + 513, "Convert", "Ends badly"
End Sub

Sub main()
    Dim docFileName As String
    On Error GoTo Fail
    Set FileSystemObj = CreateObject("Scripting.FileSystemObject")
    docFileName = "" & ChrW(26085) & ChrW(26412) & ".zenprt"
    Set znApp = Application.Zentrel
    znApp.Visible = True
    Debug.Print GetExtension(3, "Viewpane (*.vprt;*.vasm;*.vdrw)"); GetExtension(1, "3D PDF - MBD (*.pdf)"); Is3dPDF; GetExtension(2, "X (*.a;*)")
    Debug.Print GetFullFileName("C:\o\<Configuration>:?.pdf", "a\b", 1, 5); bIsSupportedExtension("STEP"); bIsSupportedExtension("doc")
    Convert docFileName
    Exit Sub
Fail:
    Log "Error while converting file '" & docFileName & "': " & vbCrLf & _
        "Error number: " & Err.Number & vbCrLf & "Error description: '" & Err.Description & "'"
    Open "C:\logs\{1-2}.log" For Input As #2
    Dim s As String
    While Not EOF(2)
        Line Input #2, s
        Debug.Print s
    Wend
    Close #2
End Sub
' expect: .vdrw.pdfTrue
' expect: C:\o\ab.pdfTrueFalse
' expect: C:\out\part_0.stepTrue 4096
' expect: C:\out\part_1.stepTrue 4096
' expect: Unsupported ZENTREL version found on the task host
' expect: True
' expect: Method call for document 'C:\out\part_0.step' failed. Error code 4096 returned.
' expect: Method call for document 'C:\out\part_1.step' failed. Error code 4096 returned.
' expect: Error while converting file '<U+65E5><U+672C>.zenprt':
' expect: Error number: -2147220991
' expect: Error description: 'Ends badly'
