' The results are those of an account kept period by period, not of the formulas.
Private Function Shown(ByVal number As Double) As String
    Shown = Format(number, "0.0000")
End Function

Private Sub Fails(ByVal which As Integer)
    On Error Resume Next
    Dim flows(1) As Double, result As Double
    flows(0) = 1: flows(1) = 2
    Select Case which
    Case 1: result = Pmt(0.1, 0, 100)
    Case 2: result = IPmt(0.1, 13, 12, 100)
    Case 3: result = NPer(-1, 1, 1)
    Case 4: result = NPer(0.1, -1, 1000)
    Case 5: result = IRR(flows)
    Case 6: result = MIRR(flows, 0.1, 0.1)
    Case 7: result = SLN(1, 0, 0)
    Case 8: result = SYD(100, 0, 5, 6)
    Case 9: result = DDB(100, 0, 5, 6)
    Case 10: result = NPV(-1, flows)
    Case 11: result = NPV(0.1, 5)
    Case 12: result = Rate(0, 1, 1)
    Case 13: result = FV(1E+300, 2, 1)
    End Select
    Debug.Print which & ":" & Err.Number & " ";
End Sub

Sub main()
    Dim monthly As Double
    monthly = 0.1 / 12
    Debug.Print Shown(Pmt(monthly, 24, 10000)); " "; Shown(Pmt(monthly, 24, 10000, 0, 1)); " "; Shown(Pmt(0, 10, -1000, -500)) ' expect: -461.4493 -457.6356 150.0000
    Debug.Print Shown(FV(monthly, 24, -100)); " "; Shown(FV(monthly, 24, -100, -1000, 1)); " "; Shown(FV(0, 10, -100, 50)) ' expect: 2644.6915 3887.1216 950.0000
    Debug.Print Shown(PV(0.0825, 20, 50000)); " "; Shown(PV(0, 5, 10, 7)) ' expect: -481907.3953 -57.0000
    Debug.Print Shown(IPmt(monthly, 5, 24, 10000)); " "; Shown(PPmt(monthly, 5, 24, 10000)) ' expect: -70.5710 -390.8782
    Debug.Print Shown(IPmt(monthly, 5, 24, 10000, 0, 1)); " "; Shown(PPmt(monthly, 5, 24, 10000, Due:=1)); " "; Shown(IPmt(monthly, 1, 24, 10000, 0, 1)) ' expect: -69.9878 -387.6478 0.0000
    Debug.Print Shown(NPer(0.01, -200, 8000)); " "; Shown(NPer(0, -200, 8000)) ' expect: 51.3376 40.0000
    Debug.Print Format(Rate(48, -200, 8000), "0.00000000"); " "; Format(Rate(NPer:=48, Pmt:=-200, PV:=8000, Guess:=0.02), "0.00000000") ' expect: 0.00770147 0.00770147
    Dim flows(4) As Double
    flows(0) = -70000: flows(1) = 22000: flows(2) = 25000: flows(3) = 28000: flows(4) = 31000
    Debug.Print Format(IRR(flows), "0.00000000"); " "; Format(IRR(flows, 0.5), "0.00000000"); " "; Format(MIRR(flows, 0.1, 0.12), "0.00000000") ' expect: 0.17743588 0.17743588 0.15512706
    Debug.Print Shown(NPV(0.0625, flows)); " "; Shown(NPV(0, Array(1, 2, "3"))) ' expect: 19312.5702 6.0000
    Debug.Print Shown(SLN(2400, 300, 10)); " "; Shown(SYD(2400, 300, 10, 3)) ' expect: 210.0000 305.4545
    Debug.Print Shown(DDB(2400, 300, 10, 1)); " "; Shown(DDB(2400, 300, 10, 9)); " "; Shown(DDB(2400, 300, 10, 10)); " "; Shown(DDB(100, 10, 2, 1, 3)); " "; Shown(DDB(100, 10, 2, 2, 3)) ' expect: 480.0000 80.5306 22.1225 90.0000 0.0000
    Dim i As Integer
    For i = 1 To 13
        Fails i
    Next
    Debug.Print ' expect: 1:5 2:5 3:5 4:5 5:5 6:11 7:5 8:5 9:5 10:5 11:13 12:5 13:6
End Sub
