' A script as a host that tests a device's own vectors. Its two words: what the device object's failure begins with, or
' "none" where the test has to run; and a file of the device with its vectors. Ends with 1 at the first thing that is
' not as it should be.
Option Explicit

Dim failures
failures = 0

Sub Expect(what, seen, wanted)
    If CStr(seen) <> CStr(wanted) Then
        WScript.Echo what & ": " & seen & " where " & wanted & " was expected"
        failures = failures + 1
    End If
End Sub

Dim plugin, wanted, vectors
wanted = WScript.Arguments(0)
vectors = WScript.Arguments(1)
Set plugin = CreateObject("tamrix.Clstamrix")
plugin.bufcomopt 2
plugin.buffercomopt 2
plugin.readpldfile vectors

On Error Resume Next
plugin.vecttest0 1, 3, 0, True
If wanted = "none" Then
    Expect "error", Err.Description, ""
Else
    Expect "error", Left(Err.Description, Len(wanted)), wanted
End If
Err.Clear

If failures = 0 Then WScript.Echo "The script found all as it should be."
WScript.Quit Sgn(failures)
