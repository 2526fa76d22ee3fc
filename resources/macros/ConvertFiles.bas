'ZENTREL ARKIN 2018 - Default Convert Task Script
'-----------------------------------------------------------------------------
' Converts one document, the one that the task is working on, to the output
' format and the output paths of the task, and closes it again.
'
' Before the macro runs, the task replaces the names in square brackets by its
' own settings, and the names in angle brackets by the data of the file. Three
' of the latter (Filename, Extension, Configuration) are left to the macro,
' since only the open document tells them. Keep all these names out of comments.
'
' Texts for the system functions and the file statements are passed as pointers
' (StrPtr), so that names outside the code page of this macro work as well.
'
' A failed step is written to the log file of the task. The task goes on with
' its next file.
'-----------------------------------------------------------------------------
Option Explicit

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

' The settings "which sheets" and "which configurations". The first bit that
' is set, in this order, decides.
Private Const outputAll As Long = 2
Private Const outputLastActive As Long = 4
Private Const outputNamed As Long = 8

' The settings "how they are grouped into files", likewise.
Private Const fileForEach As Long = 4
Private Const fileForAll As Long = 2

' The settings of the 3D PDF format.
Private Const publishPrimaryViews As Long = 2
Private Const publish3DViews As Long = 4

' Values of "errors" and "warnings" after a save.
Private Const invalidFileExtension As Long = 256
Private Const formNotSupported As Long = 4096
Private Const missingOLEObjects As Long = 512

Dim znApp As Object
Dim znModel As Zentrel.ModelDoc2
Dim znDrawing As Zentrel.DrawingDoc
Dim znAssembly As Zentrel.AssemblyDoc
Dim znExtension As Zentrel.ModelDocExtension
Dim znConfMgr As Zentrel.ConfigurationManager
Dim znPDFExport As Zentrel.ExportPdfData
Dim znDocSpecification As Zentrel.DocumentSpecification
Dim FileSystemObj As Object
Dim errors As Long
Dim warnings As Long
Dim Is3dPDF As Boolean

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
    Dim logPath As String

    logPath = "[ErrorLogPath]"
    If Left(logPath, 1) = "\" Then logPath = Mid(logPath, 2)
    If PathIsRelative(StrPtr(logPath)) <> 0 Then logPath = PathAppend("<VaultPath>", logPath)
    SHCreateDirectoryEx 0, StrPtr(logPath), 0

    logPath = PathAppend(logPath, "<TaskInstanceGuid>.log")
    Open StrPtr(logPath) For Append As #1
    Print #1, message
    Close #1
End Sub

'-----------------------------------------------------------------------------
' Creates a folder (the path ends in a backslash) with its parents. A folder
' that is new gets a holder file, so that it isn't empty, and perhaps removed,
' while the conversion runs.
'-----------------------------------------------------------------------------
Sub CreatePath(ByVal path As String)
    If SHCreateDirectoryEx(0, StrPtr(path), 0) = 0 Then
        Open StrPtr(path & "~$holder") For Append As #1
        Close #1
    End If
End Sub

'-----------------------------------------------------------------------------
' Removes the holder file of a folder, if there is one.
'-----------------------------------------------------------------------------
Sub KillHolder(ByVal path As String)
    On Error Resume Next
    If FileSystemObj.FileExists(path & "~$holder") Then FileSystemObj.DeleteFile path & "~$holder"
End Sub

'-----------------------------------------------------------------------------
' Takes the file extension with its dot from the name of the output format,
' such as ".pdf" from "Adobe PDF (*.pdf)". Where the name lists one extension
' each for parts, assemblies and drawings, the type of the document decides.
' Notes whether the format is 3D PDF, which shares its extension with PDF.
'-----------------------------------------------------------------------------
Function GetExtension(ByVal docType As Long, ByVal fileFormat As String) As String
    Dim opening As Long
    Dim closing As Long
    Dim pattern As String
    Dim patterns As Variant

    opening = InStr(fileFormat, "(")
    closing = InStr(opening + 1, fileFormat, ")")
    Is3dPDF = (Left(fileFormat, opening - 1) = "3D PDF - MBD ")

    pattern = Mid(fileFormat, opening + 1, closing - opening - 1)
    If InStr(pattern, ";") > 0 Then
        patterns = Split(pattern, ";")
        pattern = "*."
        If docType - 1 <= UBound(patterns) Then pattern = patterns(docType - 1)
    End If
    GetExtension = Mid(Trim(pattern), 2)
End Function

'-----------------------------------------------------------------------------
' Sets the preferences that steer the output format. They stay set for the
' next file.
'-----------------------------------------------------------------------------
Sub SetConversionOptions(ByVal ext As String)
    Select Case LCase(ext)
    Case ".pdf"
        znApp.SetUserPreferenceToggle znPDFExportInColor, [PdfInColor]
        znApp.SetUserPreferenceToggle znPDFExportEmbedFonts, [PdfEmbedFonts]
        znApp.SetUserPreferenceToggle znPDFExportHighQuality, [PdfHighQuality]
        znApp.SetUserPreferenceToggle znPDFExportPrintHeaderFooter, [PdfPrintHeaderFooter]
        znApp.SetUserPreferenceToggle znPDFExportUseCurrentPrintLineWeights, [PdfUsePrinterLineWeights]
    Case ".igs"
        znApp.SetUserPreferenceToggle znIGESExportSolidAndSurface, [IgesExportSolidSurface]
        znApp.SetUserPreferenceIntegerValue znIGESRepresentation, [IgesRepresentation]
        znApp.SetUserPreferenceToggle znIGESExportAsWireframe, [IgesExportWireframe]
        znApp.SetUserPreferenceIntegerValue znIGESCurveRepresentation, [IgesCurveRepresentation]
        znApp.SetUserPreferenceIntegerValue znIGESSystem, [IgesSystem]
        znApp.SetUserPreferenceToggle znIGESExportFreeCurves, [IgesExportFreeCurves]
        znApp.SetUserPreferenceToggle znIGESExportSketchEntities, [IgesExportSketchEntities]
        znApp.SetUserPreferenceToggle znIGESHighTrimCurveAccuracy, [IgesHighCurveAccuracy]
        znApp.SetUserPreferenceToggle znIGESComponentsIntoOneFile, [IgesComponentsIntoOneFile]
        znApp.SetUserPreferenceToggle znIGESFlattenAssemHierarchy, [IgesFlattenAssemblyHierarchy]
    Case ".sat"
        znApp.SetUserPreferenceIntegerValue znAcisOutputGeometryPreference, [AcisGeometry]
        znApp.SetUserPreferenceIntegerValue znOutputVersion, [AcisVersion]
        znApp.SetUserPreferenceIntegerValue znAcisOutputUnits, [AcisOutputAsUnit]
    Case ".step"
        ' STEP shares the preference for the geometry with ACIS.
        znApp.SetUserPreferenceIntegerValue znAcisOutputGeometryPreference, [StepGeometry]
        znApp.SetUserPreferenceIntegerValue znStepAP, [StepVersion]
    Case ".x_t", ".x_b"
        znApp.SetUserPreferenceIntegerValue znParasolidOutputVersion, [ParasolidVersion]
        znApp.SetUserPreferenceToggle znXTAssemSaveFormat, [ParasolidFlattenHierarchy]
    Case ".wrl"
        znApp.SetUserPreferenceIntegerValue znExportVrmlUnits, [VrmlOutputAsUnit]
        znApp.SetUserPreferenceToggle znExportVrmlAllComponentsInSingleFile, [VrmlSaveAssemblyAsOneFile]
    Case ".stl"
        znApp.SetUserPreferenceToggle znSTLBinaryFormat, [StlOutputAs]
        znApp.SetUserPreferenceIntegerValue znExportStlUnits, [StlOutputAsUnit]
        znApp.SetUserPreferenceIntegerValue znSTLQuality, [StlQuality]
        znApp.SetUserPreferenceToggle znSTLDontTranslateToPositive, [StlDontTranslatePositive]
        znApp.SetUserPreferenceToggle znSTLComponentsIntoOneFile, [StlComponentsIntoOneFile]
        znApp.SetUserPreferenceToggle znSTLCheckForInterference, [StlCheckForInterferences]
    Case ".tif", ".psd"
        znApp.SetUserPreferenceIntegerValue znTiffImageType, [TifImageType]
        znApp.SetUserPreferenceIntegerValue znTiffCompressionScheme, [TifCompressionScheme]
    Case ".vprt", ".vasm", ".vdrw"
        znApp.SetUserPreferenceToggle znViewpaneOkayToMeasure, [VwpnOkayToMeasure]
        znApp.SetUserPreferenceToggle znViewpaneExportSTLOkay, [VwpnAllowExportOfSTL]
        znApp.SetUserPreferenceToggle znViewpaneSaveShadedDataInDrawings, [VwpnSaveShadedData]
        znApp.SetUserPreferenceToggle znViewpaneSaveBOM, [VwpnSaveBOM]
        znApp.SetUserPreferenceToggle znViewpaneSaveAnimationOkay, [VwpnSaveMotionStudies]
        znApp.SetUserPreferenceToggle znViewpaneSaveAnimationToAllConfigs, [VwpnSaveMotionStudiesToAllConfs]
        znApp.SetUserPreferenceToggle znViewpaneSaveAnimationRecalculate, [VwpnRecalcMotionStudies]
    End Select
End Sub

'-----------------------------------------------------------------------------
' The name of one output file: the configuration or sheet in its place, and
' none of the characters that a file name can't have. "i" is the place of the
' item among the outputs, "itemCount" the highest place.
'-----------------------------------------------------------------------------
Function GetFullFileName(ByVal convFileName As String, ByVal conf As String, _
                         ByVal i As Long, ByVal itemCount As Long) As String
    Dim fullName As String
    Dim dot As Long
    Dim character As Variant

    ' These two would lead to a folder that doesn't exist.
    conf = Replace(Replace(conf, "\", ""), "/", "")
    fullName = Replace(convFileName, "<Configuration>", conf)

    ' Outputs whose names don't differ would overwrite each other.
    If fullName = convFileName And itemCount > 0 Then
        dot = InStrRev(fullName, ".")
        fullName = Left(fullName, dot - 1) & "_" & CStr(i) & Mid(fullName, dot)
    End If

    For Each character In Array("<", ">", "*", "?", Chr(34), "|")
        fullName = Replace(fullName, character, "")
    Next
    ' The second character may be the colon of a drive.
    GetFullFileName = Left(fullName, 2) & Replace(Mid(fullName, 3), ":", "")
End Function

'-----------------------------------------------------------------------------
' The names out of a list that match a pattern with wildcards; Empty if there
' are none.
'-----------------------------------------------------------------------------
Function MatchingNames(ByVal names As Variant, ByVal pattern As String) As Variant
    Dim i As Long
    Dim count As Long

    For i = 0 To UBound(names)
        If names(i) Like pattern Then
            names(count) = names(i)
            count = count + 1
        End If
    Next
    If count = 0 Then Exit Function
    ReDim Preserve names(count - 1)
    MatchingNames = names
End Function

'-----------------------------------------------------------------------------
' Saves the active sheet or configuration, and logs a failure. "kind" is the
' word for what is saved.
'-----------------------------------------------------------------------------
Sub SaveItem(ByVal docFileName As String, ByVal target As String, ByVal kind As String, ByVal itemName As String, _
             ByVal ext As String, ByVal saveOpts As Long, ByVal exportData As Object, ByVal logWarnings As Boolean)
    If znExtension.SaveAs(target, znSaveAsCurrentVersion, saveOpts, exportData, errors, warnings) Then Exit Sub

    If errors = invalidFileExtension Then
        Log "The file '" & docFileName & "' and " & kind & " '" & itemName & _
            "' can't be converted to the file extension '" & ext & "'."
        Exit Sub
    End If
    Log "Method call ModelDocExtension::SaveAs for document '" & target & "' and " & kind & " '" & itemName & _
        "' failed. Error code " & errors & " returned."
    If logWarnings Then Log "warnings1 = " & warnings
    If (errors And formNotSupported) <> 0 And (warnings And missingOLEObjects) <> 0 Then
        Log "This document contains OLE objects. Such objects can't be converted outside of Zentrel. " & _
            "Please open the document and perform the conversion from Zentrel."
    End If
End Sub

'-----------------------------------------------------------------------------
' Saves all sheets or configurations into one file, and logs a failure.
'-----------------------------------------------------------------------------
Sub SaveTogether(ByVal target As String, ByVal saveOpts As Long, ByVal exportData As Object)
    If Not znExtension.SaveAs(target, znSaveAsCurrentVersion, saveOpts, exportData, errors, warnings) Then
        Log "Method call ModelDocExtension::SaveAs for document '" & target & "' failed. Error code " & _
            errors & " returned."
    End If
End Sub

'-----------------------------------------------------------------------------
' Tells the Viewpane format which of the items it is to hold.
'-----------------------------------------------------------------------------
Sub SetViewpaneSelection(ByVal outputItems As Long, ByVal itemNames As Variant)
    If outputItems And outputAll Then
        znApp.SetUserPreferenceIntegerValue znViewpaneSaveAsSelectionOption, znViewpaneSaveAll
    ElseIf outputItems And outputLastActive Then
        znApp.SetUserPreferenceIntegerValue znViewpaneSaveAsSelectionOption, znViewpaneSaveActive
    Else
        znApp.SetUserPreferenceIntegerValue znViewpaneSaveAsSelectionOption, znViewpaneSaveSelected
        znApp.SetUserPreferenceStringListValue znEmodelSelectionList, Trim(Join(itemNames, vbLf))
    End If
End Sub

'-----------------------------------------------------------------------------
' The sheets of a drawing. An empty second name means that there is no second
' output.
'-----------------------------------------------------------------------------
Sub ConvertSheets(ByVal docFileName As String, ByVal ext As String, _
                  ByVal convFileName As String, ByVal convFileName2 As String)
    Dim outputSheets As Long
    Dim fileSheets As Long
    Dim saveOpts As Long
    Dim sheetNames As Variant
    Dim sheetName As String
    Dim convFileNameTemp As String
    Dim i As Long

    outputSheets = [OutputSheets]
    fileSheets = [FileSheets]
    saveOpts = znSaveAsOptions_Silent + znSaveAsOptions_UpdateInactiveViews
    Set znDrawing = znModel

    If outputSheets And outputAll Then
        sheetNames = znDrawing.GetSheetNames
    ElseIf outputSheets And outputLastActive Then
        sheetNames = Array(znDrawing.GetCurrentSheet.GetName)
    ElseIf outputSheets And outputNamed Then
        sheetNames = MatchingNames(znDrawing.GetSheetNames, "[NamedSheet]")
    End If
    If IsEmpty(sheetNames) Then
        Log "Document '" & docFileName & "' didn't contain any sheets named '[NamedSheet]'."
        Exit Sub
    End If

    If fileSheets And fileForEach Then
        For i = 0 To UBound(sheetNames)
            sheetName = sheetNames(i)
            znDrawing.ActivateSheet sheetName
            convFileNameTemp = GetFullFileName(convFileName, sheetName, i, UBound(sheetNames))
            If LCase(ext) = ".pdf" Then
                Set znPDFExport = znApp.GetExportFileData(1)
                znPDFExport.SetSheets znExportData_ExportSpecifiedSheets, sheetName
            ElseIf LCase(ext) = ".vdrw" Then
                znApp.SetUserPreferenceIntegerValue znViewpaneSaveAsSelectionOption, znViewpaneSaveActive
            End If
            SaveItem docFileName, convFileNameTemp, "sheet", sheetName, ext, saveOpts, znPDFExport, False
            If convFileName2 <> "" Then
                convFileNameTemp = GetFullFileName(convFileName2, sheetName, i, UBound(sheetNames))
                SaveItem docFileName, convFileNameTemp, "sheet", sheetName, ext, saveOpts, znPDFExport, False
            End If
        Next
    ElseIf fileSheets And fileForAll Then
        If LCase(ext) = ".pdf" Then
            Set znPDFExport = znApp.GetExportFileData(znExportPdfData)
            znPDFExport.SetSheets znExportData_ExportSpecifiedSheets, sheetNames
        ElseIf LCase(ext) = ".vdrw" Then
            SetViewpaneSelection outputSheets, sheetNames
        End If
        SaveTogether GetFullFileName(convFileName, "All", 0, 0), saveOpts, znPDFExport
        If convFileName2 <> "" Then SaveTogether GetFullFileName(convFileName2, "All", 0, 0), saveOpts, znPDFExport
    End If
End Sub

'-----------------------------------------------------------------------------
' The configurations of a part or an assembly, likewise.
'-----------------------------------------------------------------------------
Sub ConvertConfigurations(ByVal docFileName As String, ByVal ext As String, _
                          ByVal convFileName As String, ByVal convFileName2 As String)
    Dim outputConfs As Long
    Dim fileConfs As Long
    Dim saveOpts As Long
    Dim confNames As Variant
    Dim confName As String
    Dim convFileNameTemp As String
    Dim i As Long

    outputConfs = [OutputConfs]
    fileConfs = [FileConfs]
    saveOpts = znSaveAsOptions_Silent
    Set znConfMgr = znModel.ConfigurationManager

    If outputConfs And outputAll Then
        confNames = znModel.GetConfigurationNames
    ElseIf outputConfs And outputLastActive Then
        confNames = Array(znConfMgr.ActiveConfiguration.Name)
    ElseIf outputConfs And outputNamed Then
        confNames = MatchingNames(znModel.GetConfigurationNames, "[NamedConf]")
    End If
    If IsEmpty(confNames) Then
        Log "Document '" & docFileName & "' didn't contain any configurations named '[NamedConf]'."
        Exit Sub
    End If

    If fileConfs And fileForEach Then
        For i = 0 To UBound(confNames)
            confName = confNames(i)
            znModel.ShowConfiguration confName
            convFileNameTemp = GetFullFileName(convFileName, confName, i, UBound(confNames))
            SaveItem docFileName, convFileNameTemp, "configuration", confName, ext, saveOpts, Nothing, False
            If convFileName2 <> "" Then
                convFileNameTemp = GetFullFileName(convFileName2, confName, i, UBound(confNames))
                SaveItem docFileName, convFileNameTemp, "configuration", confName, ext, saveOpts, Nothing, True
            End If
        Next
    ElseIf fileConfs And fileForAll Then
        If LCase(ext) = ".vprt" Or LCase(ext) = ".vasm" Then SetViewpaneSelection outputConfs, confNames
        SaveTogether GetFullFileName(convFileName, "All", 0, 0), saveOpts, Nothing
        If convFileName2 <> "" Then SaveTogether GetFullFileName(convFileName2, "All", 0, 0), saveOpts, Nothing
    End If
End Sub

'-----------------------------------------------------------------------------
' A part or an assembly as a 3D PDF, which needs ZENTREL 2017 or later.
'-----------------------------------------------------------------------------
Sub ConvertTo3DPDF(ByVal docFileName As String, ByVal docType As Long, _
                   ByVal convFileName As String, ByVal convFileName2 As String)
#If ("<Supported_2017ZN>") Then
    Dim pdfData As Object
    Dim themePath As String
    Dim checks As Long
    Dim primaryViews As Long
    Dim standardViews(9) As Long
    Dim viewBits As Variant
    Dim viewIds As Variant
    Dim confName As String
    Dim properties As Variant
    Dim status As Long
    Dim count As Long
    Dim i As Long

    If docType = znDocPART Then
        themePath = "[Part3DPDFThemePath]"
        checks = [PartThemeAndViewsChecks]
        primaryViews = [PartPrimaryViews]
    Else
        themePath = "[Asm3DPDFThemePath]"
        checks = [AsmThemeAndViewsChecks]
        primaryViews = [AsmPrimaryViews]
    End If

    Set pdfData = znExtension.GetMBD3DPdfData
    Set znConfMgr = znModel.ConfigurationManager
    confName = znConfMgr.ActiveConfiguration.Name
    If confName <> "" Then
        convFileName = GetFullFileName(convFileName, confName, 0, 0)
        convFileName2 = GetFullFileName(convFileName2, confName, 0, 0)
    End If
    pdfData.FilePath = convFileName
    pdfData.ViewPdfAfterSaving = False
    pdfData.ThemeName = themePath

    If checks And publishPrimaryViews Then
        viewBits = Array(4, 8, 16, 32, 64, 128, 256, 512, 1024)
        viewIds = Array(znFrontView, znBackView, znTopView, znBottomView, znLeftView, znRightView, _
                        znIsometricView, znDimetricView, znTrimetricView)
        For i = 0 To UBound(viewBits)
            If primaryViews And viewBits(i) Then
                standardViews(count) = viewIds(i)
                count = count + 1
            End If
        Next
        pdfData.SetStandardViews standardViews
    End If
    If checks And publish3DViews Then pdfData.SetMoreViews znExtension.Get3DViewNames
    properties = pdfData.GetTextAndCustomProperties

    status = znExtension.PublishTo3DPDF(pdfData)
    If convFileName2 <> "" Then
        pdfData.FilePath = convFileName2
        If status = znPublishTo3DPDF_Success Then status = znExtension.PublishTo3DPDF(pdfData)
    End If

    Select Case status
    Case znPublishTo3DPDF_InvalidPath
        Log "3D PDF - Invalid path."
    Case znPublishTo3DPDF_InvalidTheme
        Log "Couldn’t access Theme file"
    Case znPublishTo3DPDF_UnknownError
        Log "3D PDF - Unknown error."
    Case znPublishTo3DPDF_NothingToPublish
        Log "The source file '" & docFileName & "' does not contain any view(s) to publish."
    End Select
#Else
    Log "Unsupported ZENTREL version found on the task host "
#End If
End Sub

'-----------------------------------------------------------------------------
' The flat pattern of a sheet metal part, which needs ZENTREL 2018 or later.
' There is no second output.
'-----------------------------------------------------------------------------
Sub ConvertSheetMetal(ByVal docType As Long, ByVal ext As String, ByVal modelPath As String, _
                      ByVal convFileName As String)
    Dim multiBodyExport As Boolean
    Dim options As Long
    Dim alignment(11) As Double

    If docType <> znDocPART Then
        Log "Unsupported ZENTREL file extension "
        Exit Sub
    End If
#If ("<Supported_2018ZN>") Then
    multiBodyExport = [SheetMetalExportAs]
    options = [SheetMetalOptions]
    ' The origin, then the directions of the X axis, the Y axis and the normal.
    alignment(3) = 1
    alignment(7) = 1
    alignment(11) = 1
    If Not znModel.ExportToDWG2(GetFullFileName(convFileName, "All", 0, 0), modelPath, _
            znExportToDWG_ExportSheetMetal, multiBodyExport, alignment, False, False, options, Null) Then
        Log "The file '" & modelPath & "' can't be converted to the file extension '" & ext & "'."
    End If
#Else
    Log "Unsupported ZENTREL version found on the task host "
#End If
End Sub

'-----------------------------------------------------------------------------
' Opens a document, writes its outputs and closes it.
'-----------------------------------------------------------------------------
Sub Convert(ByVal docFileName As String)
    Dim docType As Long
    Dim docTitle As String
    Dim lowerName As String
    Dim extension As String
    Dim modelPath As String
    Dim modelFileName As String
    Dim modelExtension As String
    Dim ext As String
    Dim convFileName As String
    Dim convFileName2 As String
    Dim convFilePath As String
    Dim convFilePath2 As String
    Dim bSecondOutput As Boolean
    Dim components As Variant
    Dim component As Variant

    ' The type of the document by its extension. Files of other systems tell it
    ' when they are open.
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

    ' Open the document.
    errors = 0
    If docType = znDocNONE Then
        Set znModel = znApp.LoadFile4(docFileName, "", Nothing, errors)
        If Not znModel Is Nothing Then docType = znModel.GetType
    Else
        Set znDocSpecification = znApp.GetOpenDocSpec(docFileName)
        znDocSpecification.DocumentType = docType
        znDocSpecification.ReadOnly = True
        znDocSpecification.Silent = True
        znDocSpecification.ConfigurationName = ""
        znDocSpecification.DisplayState = ""
        znDocSpecification.IgnoreHiddenComponents = True
        Set znModel = znApp.OpenDoc7(znDocSpecification)
        errors = znDocSpecification.Error
    End If
    If errors = znFutureVersion Then
        Log "Document '" & docFileName & "' is future version."
        Exit Sub
    End If
    If znModel Is Nothing Then
        Log "Method call ModelDoc2::OpenDoc7 for document '" & docFileName & "' failed. Error code " & _
            errors & " returned."
        Exit Sub
    End If
    If Val(Left(znApp.RevisionNumber, 2)) >= 18 Then znApp.Frame.KeepInVisible = True
    znApp.ActivateDoc2 docFileName, True, errors

    ' The parts of the document's own path.
    modelPath = znModel.GetPathName
    If modelPath = "" Then modelPath = docFileName
    modelFileName = Mid(modelPath, InStrRev(modelPath, "\") + 1)
    modelExtension = Mid(modelFileName, InStrRev(modelFileName, ".") + 1)
    modelFileName = Left(modelFileName, InStrRev(modelFileName, ".") - 1)

    ' The output paths.
    convFileName = "[OutputPath]"
    convFileName2 = "[OutputPath2]"
    bSecondOutput = (convFileName2 <> "")
    ext = GetExtension(docType, "[FileFormat]")
    If Is3dPDF And docType = znDocDRAWING Then
        Log "The file extension '" & modelExtension & "' is not supported."
        Exit Sub
    End If

    convFileName = Replace(Replace(convFileName, "<Filename>", modelFileName), "<Extension>", modelExtension)
    convFilePath = Left(convFileName, InStrRev(convFileName, "\"))
    CreatePath convFilePath
    convFileName = convFileName & ext
    If bSecondOutput Then
        convFileName2 = Replace(Replace(convFileName2, "<Filename>", modelFileName), "<Extension>", modelExtension)
        convFilePath2 = Left(convFileName2, InStrRev(convFileName2, "\"))
        CreatePath convFilePath2
        convFileName2 = convFileName2 & ext
    End If

    ' Write the outputs.
    SetConversionOptions ext
    Set znExtension = znModel.Extension
    If docType = znDocDRAWING Then
        ConvertSheets docFileName, ext, convFileName, convFileName2
    ElseIf Is3dPDF Then
        ConvertTo3DPDF docFileName, docType, convFileName, convFileName2
    ElseIf LCase(ext) = ".dwg" Or LCase(ext) = ".dxf" Then
        ConvertSheetMetal docType, ext, modelPath, convFileName
    Else
        ConvertConfigurations docFileName, ext, convFileName, convFileName2
    End If
    KillHolder convFilePath
    KillHolder convFilePath2

    ' Virtual components have no file in the vault, so they are converted with
    ' their assembly. The title is taken first, since they become the model.
    docTitle = znModel.GetTitle
    If docType = znDocASSEMBLY Then
        Set znAssembly = znModel
        components = znAssembly.GetComponents(True)
        If IsArray(components) Then
            For Each component In components
                If component.IsVirtual Then Convert component.GetPathName()
            Next
        End If
    End If
    znApp.QuitDoc docTitle
End Sub

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
' The task starts here.
'-----------------------------------------------------------------------------
Sub main()
    Dim docFileName As String

    On Error GoTo Fail
    Set FileSystemObj = CreateObject("Scripting.FileSystemObject")
    docFileName = "<Filepath>"
    Set znApp = Application.Zentrel
    znApp.Visible = True
    Convert docFileName
    Exit Sub

Fail:
    Log "Error while converting file '" & docFileName & "': " & vbCrLf & _
        "An unexpected error occurred while executing the generated script. Script syntax error?" & vbCrLf & _
        "Error number: " & Err.Number & vbCrLf & _
        "Error description: '" & Err.Description & "'" & vbCrLf
End Sub
