' A script as a host: nothing but the name of the class. Needs a registered tamrix.dll.
'
'     cscript //nologo script_host.vbs
'
' tamrix.dll is a library for 32 bits. On Windows for 64 bits, run the script host of the same width:
'
'     %WINDIR%\SysWOW64\cscript.exe //nologo script_host.vbs
'
' A script cannot reach the shared blocks, in which a host describes its device and finds the data; see
' shared_blocks.cpp for that. It can attach the plug-in and call any method.
Option Explicit

Dim files, folder, plugin, result
Set files = CreateObject("Scripting.FileSystemObject")
folder = files.GetAbsolutePathName(".") & "\"

' The object. This fails where tamrix.dll is not registered.
Set plugin = CreateObject("tamrix.Clstamrix")
WScript.Echo "The class: " & TypeName(plugin)

' Two calls come before all others, in this order: the small blocks of instance 1, then the buffer. In between a real
' host sets the length of the buffer.
plugin.bufcomopt 1
plugin.buffercomopt 1

' A serial vector file. The plug-in leaves a copy of it, "pldtmp.svf", in the folder of the second argument.
WriteFile "chain.svf", "SIR 8 TDI (FE);" & vbCrLf & "SDR 32 TDO (12345678);" & vbCrLf
result = plugin.readsvffile(folder & "chain.svf", folder)
WScript.Echo "readsvffile: " & result & " (" & TypeName(result) & ")"
WScript.Echo "The copy begins with: " & FirstLine("pldtmp.svf")

' A fuse file goes to the buffer. The method has nothing to tell, so its result is empty.
WriteFile "fuses.jed", Chr(2) & "QF16*F0*L00000 1111000011110001*" & Chr(3)
result = plugin.readpldfile(folder & "fuses.jed")
WScript.Echo "readpldfile: " & TypeName(result)

' A call that fails tells why: there is no programmer, and "one" is no number.
On Error Resume Next
plugin.vecttest0 1, 3, 0, True
If Err.Number <> 0 Then WScript.Echo "vecttest0 failed: " & Err.Description
Err.Clear
plugin.bufcomopt "one"
If Err.Number <> 0 Then WScript.Echo "bufcomopt failed: " & Err.Number
On Error GoTo 0

' At the end the buffer is given back. The object goes with the script.
plugin.freesharebufferopt

Sub WriteFile(name, words)
    Dim file
    Set file = files.CreateTextFile(folder & name, True)
    file.Write words
    file.Close
End Sub

Function FirstLine(name)
    Dim file
    Set file = files.OpenTextFile(folder & name)
    FirstLine = file.ReadLine
    file.Close
End Function
