' What a user without the plug-in would write: the same application file, saved and loaded by a script
' through the host's objects and MSXML.
'
'   cscript //nologo application.vbs export NETWORK NEURON FIRMWARE FILE
'   cscript //nologo application.vbs load FILE
'
' The last line says that it went to its end, which the exit code does not: "export done SECONDS POINTS"
' or "load done SECONDS POINTS CHARACTERS".
Option Explicit

Dim document, seconds, points, characters, started

Function Child(parent, name)
    Dim element
    Set element = document.createElement(name)
    parent.appendChild element
    Set Child = element
End Function

Sub AddText(parent, name, text)
    Child(parent, name).text = CStr(text)
End Sub

Function EntryText(device, identifier)
    Dim files, i
    Set files = device.Files
    EntryText = ""
    For i = 1 To files.Count
        If files.Item(i).Identifier = identifier Then
            EntryText = files.Item(i).ValueText
            Exit For
        End If
    Next
End Function

Sub SavePoint(list, point, isVariable)
    Dim element, pointType
    Set element = Child(list, point.Name)
    If isVariable Then
        If point.NVDirection = 1 Then
            AddText element, "Direction", "Output"
        Else
            AddText element, "Direction", "Input"
        End If
    End If
    AddText element, "SISD", point.SelfDoc
    Set pointType = point.SNVType
    AddText element, "SNVTType", pointType.Name
    AddText element, "Length", pointType.Length
    AddText element, "ConnectionIndex", point.Index
    points = points + 1
    If isVariable Then
        If Not point.NVIsConfig Then Exit Sub
        element.setAttribute "IsNC", "1"
    End If
    AddText element, "RawValue", point.RawValue
    AddText element, "Value", point.FormattedValue
End Sub

Sub SavePoints(profile, name, collection, isVariable)
    Dim list, point
    If collection.Count < 1 Then Exit Sub
    Set list = Child(profile, name)
    For Each point In collection
        SavePoint list, point, isVariable
    Next
End Sub

Sub Export(device, firmware, file)
    Dim declaration, root, container, profile
    Set document = WScript.CreateObject("Msxml2.DOMDocument.6.0")
    document.async = False
    Set declaration = document.createProcessingInstruction("xml", "version=""1.0""")
    document.appendChild declaration
    Set root = Child(document, "Configuration")
    AddText root, "FWVersion", "V" & firmware
    Set container = Child(root, "Export")
    AddText container, "Header", "00000000" & EntryText(device, -6)
    AddText container, "AppObjects", EntryText(device, -2)
    Set profile = Child(root, "Profile")
    AddText profile, "ProgramID", device.ProgramId
    AddText profile, "UserCPFile", device.UserCPFile
    AddText profile, "SDString", device.SISD
    SavePoints profile, "NVs", device.NetworkVariables, True
    SavePoints profile, "CPs", device.ConfigProperties, False
    document.save CStr(file)
End Sub

Class Record
    Public Name
    Public IsNC
    Public Fields
End Class

Sub LoadPoints(list, records)
    Dim node, field, found
    Set node = list.firstChild
    Do While Not node Is Nothing
        Set found = New Record
        found.Name = node.baseName
        found.IsNC = (node.getAttribute("IsNC") = "1")
        Set found.Fields = CreateObject("Scripting.Dictionary")
        Set field = node.firstChild
        Do While Not field Is Nothing
            found.Fields.Add field.baseName, field.text
            characters = characters + Len(field.text)
            Set field = field.nextSibling
        Loop
        records.Add CStr(points), found
        points = points + 1
        Set node = node.nextSibling
    Loop
End Sub

Sub Load(file)
    Dim records
    Set records = CreateObject("Scripting.Dictionary")
    Set document = WScript.CreateObject("Msxml2.DOMDocument.6.0")
    document.async = False
    If Not document.load(CStr(file)) Then WScript.Quit 1
    LoadPoints document.selectSingleNode("Configuration/Profile/NVs"), records
    LoadPoints document.selectSingleNode("Configuration/Profile/CPs"), records
End Sub

Function SecondsSince(moment)
    SecondsSince = Timer - moment
    ' The timer starts again at midnight.
    If SecondsSince < 0 Then SecondsSince = SecondsSince + 86400
End Function

Function NumberText(number)
    NumberText = Replace(CStr(number), ",", ".")
End Function

Dim simulator, network, device
points = 0
characters = 0
If WScript.Arguments.Item(0) = "export" Then
    Set simulator = CreateObject("Quorvex.Simulator")
    simulator.Recording = False
    Set network = simulator.OpenNetwork(WScript.Arguments.Item(1))
    Set device = CreateObject("Quorvex.Device")
    Set device.Network = network
    device.NeuronID = WScript.Arguments.Item(2)
    started = Timer
    Export device, WScript.Arguments.Item(3), WScript.Arguments.Item(4)
    seconds = SecondsSince(started)
    WScript.Echo "export done " & NumberText(seconds) & " " & points
Else
    started = Timer
    Load WScript.Arguments.Item(1)
    seconds = SecondsSince(started)
    WScript.Echo "load done " & NumberText(seconds) & " " & points & " " & characters
End If
