' A host that is a script lets the simulated programmer test itself, and a person works the dialog. Its one word says how
' that programmer is: "sound", or "broken" where the VCC driver of pin 7 is dead and block 3 of the memory bad. Ends with
' 1 where anything was not as it should be.
Option Explicit

Dim shell, blocks, plugin, failures
Set shell = CreateObject("WScript.Shell")
failures = 0

Sub Expect(what, seen, wanted)
    If CStr(seen) <> CStr(wanted) Then
        WScript.Echo what & ": """ & seen & """ where """ & wanted & """ was expected"
        failures = failures + 1
    End If
End Sub

' Pairs of a title and a deed, one after the other.
Sub Person(deeds)
    shell.Run "person.exe " & deeds, 0, False
End Sub

Function Dialog(deed)
    Dialog = " ""Self_test"" """ & deed & """"
End Function

Function Told(words)
    Told = InStr(blocks.Text("MainRtstr", 0), words) > 0
End Function

Sub SelfTest
    blocks.SetText "MainRtstr", 0, ""
    blocks.SetNumber "rambknum", 0, 99
    blocks.SetNumber "ramlg", 0, 99
    Expect "result", TypeName(plugin.mnutesttestksm), "Empty"
End Sub

' What the host does: the blocks, and in them the programmer: model 40 by USB.
Set blocks = CreateObject("tamrixtests.Blocks")
blocks.Create 1, 65536
blocks.SetNumber "modeltype", 0, 40
blocks.SetNumber "usbable", 0, -1
Set plugin = CreateObject("tamrix.Clstamrix")
plugin.bufcomopt 1

Dim found
found = ">> Self_test: fault: pin 7 (port 4 bit 2): VCC driver: expected high, read low"
If WScript.Arguments(0) = "sound" Then
    Person Dialog("Test") & Dialog("await:System Test OK!") & Dialog("Cancel")
    SelfTest
    Expect "good blocks of the memory", blocks.Number("rambknum", 0), 16
    Expect "bytes of the memory", blocks.Number("ramlg", 0), 524288
    Expect "faults", Told("fault:"), False
    Expect "what was not tested", Told(">> Self_test: VCC driver: 8 pins not tested"), True
Else
    ' A fault of the memory asks nothing, one of a driver does. First a person who goes on, with the mouse.
    Person Dialog("Test") & Dialog("Continue") & Dialog("await:System Test fail!") & Dialog("Cancel")
    SelfTest
    Expect "good blocks of the memory", blocks.Number("rambknum", 0), 15
    Expect "bytes of the memory", blocks.Number("ramlg", 0), 491520
    Expect "fault of the memory", Told(">> Self_test: fault: RAM block 3: expected "), True
    Expect "fault of the driver", Told(found), True
    Expect "the stage after it", Told(">> Self_test: GND driver: 8 pins not tested"), True
    ' Then one who stops, with the keyboard.
    Person Dialog("keys:{enter}") & Dialog("await:Continue") & Dialog("keys:{tab}{enter}") & _
           Dialog("await:System Test fail!") & Dialog("keys:{esc}")
    SelfTest
    Expect "fault of the driver", Told(found), True
    Expect "the stage after it", Told("GND driver"), False
End If

' Nothing runs: nothing is written.
Person Dialog("keys:{esc}")
SelfTest
Expect "good blocks of the memory", blocks.Number("rambknum", 0), 99
Expect "status text", blocks.Text("MainRtstr", 0), ""

Set plugin = Nothing
If failures = 0 Then WScript.Echo "The script found all as it should be."
WScript.Quit Sgn(failures)
