Option Explicit
Sub main()
    Dim fso As Object, t As Object, f, folder As Object
    Set fso = CreateObject("Scripting.FileSystemObject")
    Debug.Print fso.GetFileName("C:\a\b.txt"); fso.GetBaseName("C:\a\b.c.txt"); fso.GetExtensionName("b.txt"); fso.GetParentFolderName("C:\a\b.txt") ' expect: b.txtb.ctxtC:\a
    Debug.Print fso.BuildPath("C:\a", "b"); fso.BuildPath("C:\a\", "b"); Len(fso.GetTempName) ' expect: C:\a\bC:\a\b 12
    fso.CreateFolder "C:\f"
    Debug.Print fso.FolderExists("C:\f"); fso.FileExists("C:\f"); fso.FolderExists("") ' expect: TrueFalseFalse
    Set t = fso.CreateTextFile("C:\f\a.txt", True)
    t.WriteLine "one": t.Write "two" & vbCrLf & "three": t.Close
    Set t = fso.OpenTextFile("C:\f\a.txt")
    Debug.Print t.ReadLine; t.Line; t.AtEndOfStream; t.ReadAll; t.AtEndOfStream
    ' expect: one 2 Falsetwo
    ' expect: threeTrue
    t.Close
    Set t = fso.OpenTextFile("C:\f\w.txt", ForWriting, True, TristateTrue)
    t.Write ChrW(26085): t.Close
    Set t = fso.OpenTextFile("C:\f\w.txt", 1, False, -1)
    Debug.Print AscW(t.ReadAll); FileLen("C:\f\w.txt") ' expect:  26085  4
    t.Close
    fso.CopyFile "C:\f\a.txt", "C:\f\b.txt"
    fso.MoveFile "C:\f\b.txt", "C:\f\c.txt"
    Set folder = fso.GetFolder("C:\f")
    For Each f In folder.Files
        Debug.Print f.Name; f.Size; ";";
    Next
    Debug.Print folder.Files.Count; folder.Name; folder.SubFolders.Count ' expect: a.txt 15 ;c.txt 15 ;w.txt 4 ; 3 f 0
    Debug.Print fso.GetFile("C:\f\a.txt").DateLastModified; fso.GetFile("C:\f\a.txt").ParentFolder.Path ' expect: 3/5/2018 2:07:09 PMC:\f
    SetAttr "C:\f\c.txt", vbReadOnly
    On Error Resume Next
    fso.DeleteFile "C:\f\c.txt": Debug.Print Err.Number ' expect:  70
    Err.Clear: fso.DeleteFile "C:\f\c.txt", True: Debug.Print Err.Number ' expect:  0
    fso.DeleteFile "C:\f\none.txt": Debug.Print Err.Number ' expect:  53
    Err.Clear: fso.CreateFolder "C:\f": Debug.Print Err.Number ' expect:  58
    Err.Clear: fso.GetFolder "C:\none": Debug.Print Err.Number ' expect:  76
    Err.Clear: fso.CopyFile "C:\f\a.txt", "C:\f\w.txt", False: Debug.Print Err.Number ' expect:  58
    Err.Clear: fso.NoSuch: Debug.Print Err.Number ' expect:  438
    Err.Clear: fso.DeleteFolder "C:\f": Debug.Print Err.Number; fso.FolderExists("C:\f") ' expect:  0 False
    Err.Clear: Set t = CreateObject("No.Such"): Debug.Print Err.Number; Err.Description ' expect:  429 The object can't be created: No.Such
End Sub
