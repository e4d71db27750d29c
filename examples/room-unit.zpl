^XA
^FX Product label of a room unit, 60 x 40 mm at 203 dpi
^PW480^LL320
^FO30,30^A0N,40,40^FDNimbra room unit^FS
^FO30,90^BY2^BCN,90,N,N,N^FDnnnnnnnnnnnn^FS
^FO30,200^A0N,30,30^FDNeuron ID nnnnnnnnnnnn^FS
^FO30,250^A0N,30,30^FDMade YYWW^FS
^XZ
^XA
^FX Small label for the wiring box
^PW480^LL160
^FO30,30^A0N,30,30^FDnnnnnnnnnnnn^FS
^FO30,80^A0N,30,30^FDYYWW^FS
^XZ
