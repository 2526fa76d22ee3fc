Sub main()
    x = 5555555555555555555555^
End Sub
