' A script as a host that has a chip's own vectors tested, with everything bound late. Its first word is the begin of
' the error that must come, or "none" where the test has to run; then the second word names the file to which the
' simulated programmer writes what it received. Ends with 1 at the first thing that is not as it should be.
Option Explicit

Dim failures
failures = 0

Sub Expect(what, seen, wanted)
    If CStr(seen) <> CStr(wanted) Then
        WScript.Echo what & ": " & seen & " where " & wanted & " was expected"
        failures = failures + 1
    End If
End Sub

Dim files, vectors, plugin, wanted, transcript, told
wanted = WScript.Arguments(0)
Set files = CreateObject("Scripting.FileSystemObject")
Set vectors = files.CreateTextFile("nand.jed", True)
vectors.Write Chr(2) & "QF8*F0*L00000 00000000*" & vbLf & "V0001 00H00HGH00H00V*" & vbLf & _
              "V0002 11L11LGL11L11V*" & vbLf & Chr(3)
vectors.Close

Set plugin = CreateObject("tamrix.Clstamrix")
plugin.bufcomopt 2
Expect "device data", CreateObject("WScript.Shell").Run("tests_set_device.exe 2", 0, True), 0
plugin.buffercomopt 2
plugin.readpldfile "nand.jed"

On Error Resume Next
plugin.vecttest0 1, 3, 1, True
If wanted = "none" Then
    Expect "error", Err.Description, ""
Else
    Expect "error", Left(Err.Description, Len(wanted)), wanted
End If
Err.Clear
On Error GoTo 0

If wanted = "none" Then
    files.CopyFile WScript.Arguments(1), "copy.txt", True  ' its writer has it open still, which OpenTextFile does not allow
    Set transcript = files.OpenTextFile("copy.txt")
    told = transcript.ReadAll
    Expect "supply", InStr(told, "vccpin 107 1") > 0, True
    ' What the pins of a sound chip read at the lower part of the socket: all inputs low, then high.
    Expect "first row", InStr(told, "regin 0: 148") > 0, True
    Expect "second row", InStr(told, "regin 0: 99") > 0, True
    Expect "hazards", InStr(told, "hazard"), 0
    Expect "end", Right(told, Len("hwrelease") + 1), "hwrelease" & vbLf
End If

If failures = 0 Then WScript.Echo "The script found all as it should be."
WScript.Quit Sgn(failures)
