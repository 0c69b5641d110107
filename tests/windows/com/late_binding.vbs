' A script as a host: everything late bound. Ends with 1 at the first thing that is not as it should be.
Option Explicit

Dim failures
failures = 0

Sub Expect(what, seen, wanted)
    If CStr(seen) <> CStr(wanted) Then
        WScript.Echo what & ": " & seen & " where " & wanted & " was expected"
        failures = failures + 1
    End If
End Sub

Dim plugin, number, file, folder, result
Set plugin = CreateObject("tamrix.Clstamrix")
Expect "type name", TypeName(plugin), "_Clstamrix"

plugin.bufcomopt 1
plugin.buffercomopt 1
number = 1
plugin.bufcomopt number
plugin.buffercomopt number
Expect "number", number, 1
number = 128  ' bit 7 is cleared in the variable; note 0 shows nothing
plugin.warn number, True
Expect "number of the note", number, 0

' Texts as literals, as variables, as expressions.
file = "missing.svf"
folder = "C:\nowhere\"
result = plugin.readsvffile("missing.svf", "C:\nowhere\")
Expect "result type", TypeName(result), "Integer"
Expect "result", result, 0
Expect "result", plugin.readsvffile(file, folder), 0
Expect "result", plugin.readsvffile(file & "x", folder), 0
Expect "file", file, "missing.svf"
Expect "empty result", TypeName(plugin.readpldfile(file)), "Empty"
plugin.warn 0, True
plugin.freesharebufferopt

On Error Resume Next
plugin.nothing_of_this_name
Expect "error number", Err.Number, 438
Err.Clear
plugin.bufcomopt "no number"
Expect "error number", Err.Number, 13

If failures = 0 Then WScript.Echo "The script found all as it should be."
WScript.Quit Sgn(failures)
