Option Explicit
Dim errors As Long, warnings As Variant
Sub main()
    Dim model As Zentrel.ModelDoc2, ok As Boolean, list(1) As Long, o
    Set model = Application
    ok = model.Open("C:\a.zenprt", errors, warnings)
    Debug.Print ok; errors; warnings ' expect: True 4096 none
    list(1) = 5
    ok = model.Open("missing", list(1), o)
    Debug.Print ok; list(1); o ' expect: False 4096 none
    list(1) = 5
    model.Open "x", (list(1)), o
    Debug.Print list(1) ' expect:  5
    model.Visible = True
    Debug.Print model.Visible; model.GetNames(1); UBound(model.GetNames) ' expect: TrueLarge 1
    Debug.Print model.Describe(1, "two", True); "|"; model.Describe(1, , x:=3); "|"; model.Describe ' expect: 1, two, -1|1, (missing), x=3|
    Set model.Child = model
    Debug.Print model.Child.Child.Visible; model.Child Is model; TypeName(model); TypeOf model Is Zentrel.ModelDoc2 ' expect: TrueTrueModelDoc2True
    With model
        .Title = "t": Debug.Print .Title & .Describe(.Title) ' expect: tt
        With .Child
            .Title = "inner"
        End With
        Debug.Print .Title ' expect: inner
    End With
    Debug.Print CallByName(model, "Title", vbGet) ' expect: inner
    CallByName model, "Title", vbLet, "by name"
    Debug.Print model.Title; MsgBox("Go on?", vbYesNo, "Title") = vbYes
    ' expect: [Title|4] Go on?
    ' expect: by nameTrue
    Set o = CreateObject("Test.Object")
    o.Title = Array(1, 2)
    Debug.Print o.Title(1) ' expect:  2
    MsgBox Prompt:="named", Title:="T" ' expect: [T|0] named
End Sub
