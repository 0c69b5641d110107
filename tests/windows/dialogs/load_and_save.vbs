' A host that is a script loads an Intel HEX file and saves it again; a person presses the buttons. Ends with 1 at the end
' where anything was not as it should be.
Option Explicit

Dim shell, files, blocks, plugin, failures
Set shell = CreateObject("WScript.Shell")
Set files = CreateObject("Scripting.FileSystemObject")
failures = 0

Sub Expect(what, seen, wanted)
    If CStr(seen) <> CStr(wanted) Then
        WScript.Echo what & ": """ & seen & """ where """ & wanted & """ was expected"
        failures = failures + 1
    End If
End Sub

Sub Person(title, deed)
    shell.Run "person.exe """ & title & """ """ & deed & """", 0, False
End Sub

Function Contents(name)
    Dim stream
    Set stream = files.OpenTextFile(name)
    Contents = stream.ReadAll
    stream.Close
End Function

Dim record, stream
record = ":10000000000102030405060708090A0B0C0D0E0F78" & vbCrLf & ":00000001FF" & vbCrLf
Set stream = files.CreateTextFile("in.hex")
stream.Write record
stream.Close

' What the host does: the blocks, and in them the device.
Set blocks = CreateObject("tamrixtests.Blocks")
blocks.Create 1, 65536
blocks.SetNumber "tlength", 0, 16
blocks.SetNumber "wordmode", 0, 1
blocks.SetNumber "pagelength", 0, 1

Set plugin = CreateObject("tamrix.Clstamrix")
plugin.bufcomopt 1
plugin.buffercomopt 1
blocks.Fill 255

' A load that is cancelled leaves everything as it is.
Dim result, file, format, folder
Person "Load A File To Buffer", "Cancel"
result = plugin.readfile0("in.hex", 1, "")
Expect "result of the cancelled load", TypeName(result), "Empty"
Expect "buffer after it", blocks.Bytes(0, 4), "FFFFFFFF"

' A load with the arguments as literals, and one with variables.
Person "Load A File To Buffer", "OK"
result = plugin.readfile0("in.hex", 1, "")
Expect "result type", TypeName(result), "Integer"
Expect "result", result, 0
Expect "buffer", blocks.Bytes(0, 18), "000102030405060708090A0B0C0D0E0FFFFF"
Expect "status text", InStr(blocks.Text("MainRtstr", 0), ">>Load File OK!") > 0, True

blocks.Fill 255
blocks.SetText "MainRtstr", 0, ""
file = "in.hex"
format = 1
folder = ""
Person "Load A File To Buffer", "keys:{enter}"
result = plugin.readfile0(file, format, folder)
Expect "result", result, 0
Expect "buffer", blocks.Bytes(0, 16), "000102030405060708090A0B0C0D0E0F"
Expect "file", file, "in.hex"
Expect "status text", InStr(blocks.Text("MainRtstr", 0), ">>Load File OK!") > 0, True

' The save, and the file compared.
If files.FileExists("out.hex") Then files.DeleteFile "out.hex"
blocks.SetText "MainRtstr", 0, ""
Person "Save Buffer To A File", "OK"
result = plugin.wfile("out.hex", "")
Expect "result type of the save", TypeName(result), "Empty"
Expect "status text", InStr(blocks.Text("MainRtstr", 0), ">>Save File OK!") > 0, True
Expect "saved file", Contents("out.hex"), ":020000040000FA" & vbCrLf & record

' A file that is not there: the status text says so, and the host lives.
blocks.SetText "MainRtstr", 0, ""
Person "Load A File To Buffer", "OK"
result = plugin.readfile0("missing.hex", 1, "")
Expect "status text", InStr(blocks.Text("MainRtstr", 0), ">>Load File Fail!") > 0, True

' The same dialogs in the other languages' block of English, and an error that a host can show.
blocks.SetNumber "Language", 0, 15000
Person "Load A File To Buffer", "keys:{esc}"
result = plugin.readfile0(file, format, folder)
blocks.SetNumber "Language", 0, 999
On Error Resume Next
result = plugin.readfile0(file, format, folder)
Expect "error text", Left(Err.Description, 19), "no text with number"
Err.Clear
On Error GoTo 0
blocks.SetNumber "Language", 0, 0

' A block that cannot be made: one box, and the others are attached.
blocks.Occupy "qorfantlength2"
Person "Tamrix", "OK"
plugin.bufcomopt 2
plugin.bufcomopt 1
Person "Load A File To Buffer", "OK"
result = plugin.readfile0(file, format, folder)
Expect "buffer", blocks.Bytes(0, 16), "000102030405060708090A0B0C0D0E0F"

plugin.freesharebufferopt
Set plugin = Nothing
If failures = 0 Then WScript.Echo "The script found all as it should be."
WScript.Quit Sgn(failures)
