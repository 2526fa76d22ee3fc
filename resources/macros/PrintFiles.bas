'ZENTREL ARKIN 2018 – Default Print Task Script
'-----------------------------------------------------------------------------
' Prints one document, the one that the task is working on, with the printer,
' the paper and the margins of the task, and closes it again.
'
' Before the macro runs, the task replaces the names in square brackets by its
' own settings, and the names in angle brackets by the data of the file. Keep
' all these names out of comments.
'
' Texts for the system functions and the file statements are passed as pointers
' (StrPtr), so that names outside the code page of this macro work as well.
'
' A failed step is written to the log file of the task. The task goes on with
' its next file.
'-----------------------------------------------------------------------------
#If VBA7 Then
Private Declare PtrSafe Function SHCreateDirectoryEx Lib "shell32" Alias "SHCreateDirectoryExW" _
    (ByVal hwnd As LongPtr, ByVal pszPath As LongPtr, ByVal psa As LongPtr) As Long
Private Declare PtrSafe Function PathIsRelative Lib "shlwapi.dll" Alias "PathIsRelativeW" _
    (ByVal pszPath As LongPtr) As Long
#Else
Private Declare Function SHCreateDirectoryEx Lib "shell32" Alias "SHCreateDirectoryExW" _
    (ByVal hwnd As Long, ByVal pszPath As Long, ByVal psa As Long) As Long
Private Declare Function PathIsRelative Lib "shlwapi.dll" Alias "PathIsRelativeW" _
    (ByVal pszPath As Long) As Long
#End If

' The setting "how the printer is chosen".
Private Const printerByPaperSize As Long = 2

' The setting "which margins": those of the printer, or else those of the task.
Private Const printerMargins As Long = 0

' The settings "which header" and "which footer": the texts of the task.
Private Const fixedText As Long = 2

' Paper sizes of the user's own have numbers from here on.
Private Const userDefinedPaper As Long = 256

Private Const portrait As Long = 1
Private Const landscape As Long = 2

' Places in the list of a sheet's properties.
Private Const sheetFormat As Long = 0
Private Const sheetWidth As Long = 5
Private Const sheetHeight As Long = 6

Dim znApp As Object
Dim znModel As Zentrel.ModelDoc2
Dim znExtension As Zentrel.ModelDocExtension
Dim znPageSetup As Zentrel.PageSetup
Dim znDocSpecification As Zentrel.DocumentSpecification
Dim errors As Long
Dim warnings As Long

'-----------------------------------------------------------------------------
' Joins two parts of a path with a single backslash.
'-----------------------------------------------------------------------------
Function PathAppend(ByVal path As String, ByVal more As String) As String
    If Right(path, 1) <> "\" Then path = path & "\"
    If Left(more, 1) = "\" Then more = Mid(more, 2)
    PathAppend = path & more
End Function

'-----------------------------------------------------------------------------
' Writes a line to the log file of the task. A relative log folder lies below
' the root folder of the vault.
'-----------------------------------------------------------------------------
Sub Log(ByVal message As String)
    logPath = "[ErrorLogPath]"
    If Left(logPath, 1) = "\" Then logPath = Mid(logPath, 2)
    If PathIsRelative(StrPtr(logPath)) <> 0 Then logPath = PathAppend("<VaultPath>", logPath)
    SHCreateDirectoryEx 0, StrPtr(logPath), 0

    logFile = PathAppend(logPath, "<TaskInstanceGuid>.log")
    Open StrPtr(logFile) For Append As #1
    Print #1, message
    Close #1
End Sub

'-----------------------------------------------------------------------------
' The printer for a paper size: the size's own one if the task chooses it so,
' or else the one of the task. May be empty.
'-----------------------------------------------------------------------------
Function GetPrinter(ByVal paperSize As Long) As String
    If [__printer_prseltype] <> printerByPaperSize Then
        GetPrinter = "[__printer_prname]"
        Exit Function
    End If
    Select Case paperSize
    Case 0, 1
        GetPrinter = "[__printer_papsize_A]"
    Case 2
        GetPrinter = "[__printer_papsize_B]"
    Case 3
        GetPrinter = "[__printer_papsize_C]"
    Case 4
        GetPrinter = "[__printer_papsize_D]"
    Case 5
        GetPrinter = "[__printer_papsize_E]"
    Case 6
        GetPrinter = "[__printer_papsize_A0]"
    Case 7
        GetPrinter = "[__printer_papsize_A1]"
    Case 8
        GetPrinter = "[__printer_papsize_A2]"
    Case 9
        GetPrinter = "[__printer_papsize_A3]"
    Case 10, 11
        GetPrinter = "[__printer_papsize_A4]"
    Case 12
        GetPrinter = "[__printer_papsize_DEF]"
    End Select
End Function

'-----------------------------------------------------------------------------
' The printer's number of a paper size.
'-----------------------------------------------------------------------------
Function GetPaperSize(ByVal paperSize As Long) As Long
    Select Case paperSize
    Case 0, 1
        GetPaperSize = userDefinedPaper + 6 ' A
    Case 2
        GetPaperSize = userDefinedPaper + 7 ' B
    Case 3
        GetPaperSize = 24 ' C
    Case 4
        GetPaperSize = 25 ' D
    Case 5
        GetPaperSize = 26 ' E
    Case 6
        GetPaperSize = userDefinedPaper + 4 ' A0
    Case 7
        GetPaperSize = userDefinedPaper + 5 ' A1
    Case 8
        GetPaperSize = 66 ' A2
    Case 9
        GetPaperSize = 8 ' A3
    Case 10
        GetPaperSize = 9 ' A4
    Case 11
        GetPaperSize = 77 ' A4, rotated
    Case Else
        GetPaperSize = 9
    End Select
End Function

'-----------------------------------------------------------------------------
' Whether files of another system with this extension (without a dot) can be
' opened.
'-----------------------------------------------------------------------------
Function bIsSupportedExtension(ByVal oExtension As String) As Boolean
    Select Case LCase(oExtension)
    Case "prt", "asm", "drw", "dxf", "dwg", "psd", "ai", "lfp", "zenlfp", "zenptl", "zenatl", "zendtl", _
         "x_t", "x_b", "xmt_txt", "xmt_bin", "igs", "iges", "step", "stp", "sat", "vda", "wrl", "stl", _
         "agr", "xpr", "xas", "ipt", "iam", "par", "psm", "ckd", "emn", "brd", "bdf", "idb", "3dm"
        bIsSupportedExtension = True
    End Select
End Function

'-----------------------------------------------------------------------------
' The task starts here: opens the document, prints it and closes it.
'-----------------------------------------------------------------------------
Sub main()
    Dim docFileName As String
    Dim docCfgOrSheet As String
    Dim sNumCopies As String
    Dim docType As Long
    Dim lowerName As String
    Dim extension As String
    Dim iNumCopies As Long
    Dim printer As String
    Dim isDrawing As Boolean
    Dim fromDrawing As Boolean
    Dim isPortrait As Boolean
    Dim sheetPaper As Long
    Dim vSheetNames As Variant
    Dim vSheetProps As Variant
    Dim vPrintSheets As Variant
    Dim vMsgs As Variant
    Dim vMsgIDs As Variant
    Dim vMsgTypes As Variant
    Dim message As String
    Dim i As Long

    On Error GoTo Fail
    docFileName = "<Filepath>"
    docCfgOrSheet = "<SelCfgOrSheet>"
    sNumCopies = "[__printer_copycount]"
    iNumCopies = 1
    If sNumCopies <> "" Then iNumCopies = CLng(sNumCopies)
    Set znApp = Application.Zentrel

    ' The type of the document by its extension. Files of other systems have
    ' none of ours.
    lowerName = LCase(docFileName)
    If Right(lowerName, 7) = ".zenprt" Or Right(lowerName, 4) = ".prt" Then
        docType = znDocPART
    ElseIf Right(lowerName, 7) = ".zenasm" Or Right(lowerName, 4) = ".asm" Then
        docType = znDocASSEMBLY
    ElseIf Right(lowerName, 7) = ".zendrw" Or Right(lowerName, 4) = ".drw" Then
        docType = znDocDRAWING
    Else
        docType = znDocNONE
        extension = Mid(docFileName, InStrRev(docFileName, ".") + 1)
        If Not bIsSupportedExtension(extension) Then
            Log "The file extension '" & extension & "' is not supported."
            Exit Sub
        End If
    End If
    isDrawing = (docType = znDocDRAWING)
    fromDrawing = [__printer_usedrwnfo] And isDrawing

    ' Open the document.
    errors = 0
    If docType = znDocNONE Then
        Set znModel = znApp.LoadFile4(docFileName, "", Nothing, errors)
    Else
        Set znDocSpecification = znApp.GetOpenDocSpec(docFileName)
        znDocSpecification.DocumentType = docType
        znDocSpecification.ReadOnly = True
        znDocSpecification.Silent = True
        znDocSpecification.ConfigurationName = ""
        znDocSpecification.DisplayState = ""
        Set znModel = znApp.OpenDoc7(znDocSpecification)
        errors = znDocSpecification.Error
    End If
    If znModel Is Nothing Then
        Log "Method call ModelDoc2::OpenDoc6 for document '" & docFileName & "' failed. Error code " & _
            errors & " returned."
        Exit Sub
    End If
    If docCfgOrSheet <> "" And (docType = znDocPART Or docType = znDocASSEMBLY) Then
        znModel.ShowConfiguration docCfgOrSheet
    End If
    Set znPageSetup = znModel.PageSetup

    ' The printer. Where the drawing tells the paper, its sheet decides below.
    If isDrawing And Not fromDrawing Then
        printer = GetPrinter([__printer_defpapsize])
        If printer = "" Then
            If docCfgOrSheet <> "" Then message = " and sheet '" & docCfgOrSheet & "'"
            Log "Could not print document '" & docFileName & "'" & message & ". No printer was selected."
            Exit Sub
        End If
    ElseIf Not isDrawing Then
        printer = "[__printer_papsize_DEF]"
        If printer = "" Then printer = "[__printer_prname]"
        If printer = "" Then
            If docCfgOrSheet <> "" Then message = " and configuration '" & docCfgOrSheet & "'"
            Log "Could not print document '" & docFileName & "'" & message & ". No printer was selected."
            Exit Sub
        End If
    End If

    ' The margins, the header and the footer of the task. The task has
    ' millimetres, the preferences have metres.
    If [__printer_margintype] = printerMargins Then
        znApp.SetUserPreferenceToggle znPageSetupPrinterUsePrinterMargin, True
    Else
        znApp.SetUserPreferenceToggle znPageSetupPrinterUsePrinterMargin, False
        znApp.SetUserPreferenceDoubleValue znPageSetupPrinterTopMargin, [__printer_margintop] / 1000
        znApp.SetUserPreferenceDoubleValue znPageSetupPrinterBottomMargin, [__printer_marginbottom] / 1000
        znApp.SetUserPreferenceDoubleValue znPageSetupPrinterLeftMargin, [__printer_marginleft] / 1000
        znApp.SetUserPreferenceDoubleValue znPageSetupPrinterRightMargin, [__printer_marginright] / 1000
    End If
    If [__printer_headertype] = fixedText Then
        znPageSetup.SetHeader "[__printer_headerleft]", "[__printer_headercenter]", "[__printer_headerright]"
    End If
    If [__printer_footertype] = fixedText Then
        znPageSetup.SetFooter "[__printer_footerleft]", "[__printer_footercenter]", "[__printer_footerright]"
    End If
    Set znExtension = znModel.Extension

    ' The sheet. One that isn't in the drawing leaves the list empty, and all
    ' sheets are printed.
    If docCfgOrSheet <> "" And isDrawing Then
        vSheetNames = znModel.GetSheetNames
        For i = 0 To UBound(vSheetNames)
            If LCase(vSheetNames(i)) = LCase(docCfgOrSheet) Then
                If fromDrawing Then
                    vSheetProps = znModel.Sheet(vSheetNames(i)).GetProperties
                    ' Formats and paper sizes count alike but for the A formats.
                    sheetPaper = vSheetProps(sheetFormat)
                    Select Case sheetPaper
                    Case 6, 7
                        sheetPaper = 10 ' A4
                    Case 8
                        sheetPaper = 9 ' A3
                    Case 9
                        sheetPaper = 8 ' A2
                    Case 10
                        sheetPaper = 7 ' A1
                    Case 11
                        sheetPaper = 6 ' A0
                    End Select
                    printer = GetPrinter(sheetPaper)
                    If printer = "" Then printer = "[__printer_prname]"
                End If
                vPrintSheets = Array(i + 1)
                Exit For
            End If
        Next
    End If

    ' A document takes no printer that this machine doesn't have.
    znModel.printer = printer
    If znModel.printer <> printer Then
        Log "The printer '" & printer & "' for the Document  '" & docFileName & "' is not a valid printer."
        Exit Sub
    End If

    ' Paper and orientation.
    znExtension.UsePageSetup = znPageSetupInUse_Document
    If fromDrawing Then
        isPortrait = vSheetProps(sheetHeight) > vSheetProps(sheetWidth)
        znPageSetup.PrinterPaperSize = GetPaperSize(sheetPaper)
        If isPortrait Then
            znPageSetup.Orientation = portrait
        Else
            znPageSetup.Orientation = landscape
        End If
    Else
        znPageSetup.PrinterPaperSize = GetPaperSize([__printer_defpapsize])
        znPageSetup.Orientation = [__printer_deforientation] + 1
    End If

    ' Some printers that make PDF files turn the page. To turn it back for every
    ' printer whose name contains "PDF", take away the comment marks here, which
    ' exchanges the two values of the orientation:
    '
    ' If InStr(1, printer, "PDF", vbTextCompare) > 0 Then
    '     If znPageSetup.Orientation = portrait Then
    '         znPageSetup.Orientation = landscape
    '     Else
    '         znPageSetup.Orientation = portrait
    '     End If
    ' End If

    ' Print. The first reading empties the list of messages.
    znApp.GetErrorMessages vMsgs, vMsgIDs, vMsgTypes
    znExtension.PrintOut2 vPrintSheets, iNumCopies, False, printer, ""
    If znApp.GetErrorMessages(vMsgs, vMsgIDs, vMsgTypes) > 0 Then
        message = "Could not print file '" & docFileName & "'. The following errors occured: " & vbCrLf
        For i = 0 To UBound(vMsgs)
            message = message & vMsgs(i) & vbCrLf
        Next
        Log message
    End If
    znApp.QuitDoc znModel.GetTitle
    Exit Sub

Fail:
    Log "Error while printing file '" & docFileName & "': " & vbCrLf & _
        "An unexpected error occurred while executing the generated script. Script syntax error?" & vbCrLf & _
        "Error number: " & Err.Number & vbCrLf & _
        "Error description: '" & Err.Description & "'" & vbCrLf
End Sub
