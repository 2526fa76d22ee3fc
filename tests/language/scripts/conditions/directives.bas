Option Explicit
#Const Level = 2
#Const Text = "a" & "b"
#If ("True") Then
Const FromText = "text"
#Else
this line is nothing " at all
#End If
#If Level = 1 Then
Const Chosen = 1
#ElseIf Level = 2 And Text = "ab" Then
Const Chosen = 2
    #If Unknown Then
    @@@
    #Else
    Const Nested = "else"
    #End If
#ElseIf True Then
Const Chosen = 3
#Else
Const Chosen = 4
#End If
Sub main()
    #If VBA7 And Win64 Then
    Debug.Print FromText; Chosen; Nested ' expect: text 2 else
    #End If
    #If ("False") Then
    Debug.Print "never"
    #End If
    If 1 = 1 Then
    #If Level > 1 Then
        Debug.Print "inside a block" ' expect: inside a block
    #End If
    End If
End Sub
