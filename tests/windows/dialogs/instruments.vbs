' A host that is a script shows the logic analyzer, the generator and the meter, and a person works them with the mouse and the
' keyboard. At P21 of the simulated programmer is a square wave of 1000 hertz, P22 is low, and a lead goes from the pin of
' the generator to P23. Ends with 1 where anything was not as it should be.
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

Function Deed(title, what)
    Deed = " """ & title & """ """ & what & """"
End Function

' Which bits of the samples are ever set, and how often bit 0 changes.
Sub Look(samples, seen, changes)
    Dim at, one, before
    seen = 0
    changes = 0
    before = CInt("&H" & Mid(samples, 1, 2)) And 1
    For at = 1 To Len(samples) Step 2
        one = CInt("&H" & Mid(samples, at, 2))
        seen = seen Or one
        If (one And 1) <> before Then changes = changes + 1
        before = one And 1
    Next
End Sub

' What the host does: the blocks, with a buffer of four banks, and in them the programmer: model 40 by USB.
Set blocks = CreateObject("tamrixtests.Blocks")
blocks.Create 1, 4 * 32768 + 1
blocks.SetNumber "buflength", 0, 4 * 32768 + 1
blocks.SetNumber "tlength", 0, 4 * 32768 + 1
blocks.SetNumber "wordmode", 0, 1
blocks.SetNumber "modeltype", 0, 40
blocks.SetNumber "usbable", 0, -1
blocks.SetNumber "rambknum", 0, 4
Set plugin = CreateObject("tamrix.Clstamrix")
plugin.bufcomopt 1
plugin.buffercomopt 1
blocks.Fill 255

' 2000 samples of 3.4 microseconds are 6.8 periods.
Dim bits, edges
Person Deed("Pins Map", "OK") & Deed("Logic Analyzer", "Record") & Deed("Logic Analyzer", "await:Stop") & _
       Deed("Logic Analyzer", "await:Record") & Deed("Logic Analyzer", "Zoom Out") & Deed("Logic Analyzer", "Zoom In") & _
       Deed("Logic Analyzer", "keys:{esc}")
Expect "result of the analyzer", TypeName(plugin.analyzer0), "Empty"
Look blocks.Bytes(0, 2000), bits, edges
Expect "channels that were ever high", Hex(bits), "FD"
Expect "edges in the first bank", edges = 13 Or edges = 14, True
Look blocks.Bytes(3 * 32768, 2000), bits, edges
Expect "edges in the last bank", edges = 13 Or edges = 14, True

' Without a record the buffer stays as it is.
blocks.Fill 90
Person Deed("Pins Map", "keys:{esc}") & Deed("Logic Analyzer", "keys:{esc}")
plugin.analyzer0
Expect "buffer after a look", blocks.Bytes(0, 4), "5A5A5A5A"

' The generator, and then the meter on what it left at the lead.
Person Deed("Pins Map", "OK") & Deed("Signal Generator", "keys:12500") & Deed("Signal Generator", "Start") & _
       Deed("Signal Generator", "await:Stop") & Deed("Signal Generator", "keys:{esc}")
plugin.recetwave0 False
Person Deed("Pins Map", "OK") & Deed("Frequency Meter", "Start") & Deed("Frequency Meter", "await:012500") & _
       Deed("Frequency Meter", "Stop") & Deed("Frequency Meter", "keys:{esc}")
plugin.recetwave0 True

plugin.freesharebufferopt
Set plugin = Nothing
If failures = 0 Then WScript.Echo "The script found all as it should be."
WScript.Quit Sgn(failures)
