' In the folder of the package: the search for a logic device finds the library there, and then lacks the programmer.
Option Explicit

Dim files, plugin
Set files = CreateObject("Scripting.FileSystemObject")
Set plugin = CreateObject("tamrix.Clstamrix")
plugin.bufcomopt 1
plugin.buffercomopt 1

Sub Find(what, folder)
    On Error Resume Next
    Err.Clear
    plugin.mnutestautofind0 folder
    WScript.Echo what & ": " & Err.Description
End Sub

Find "without a library", files.GetAbsolutePathName(".") & "\samples\"
Find "with the library of the package", files.GetAbsolutePathName(".") & "\"
plugin.freesharebufferopt
