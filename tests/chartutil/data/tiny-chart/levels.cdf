[Contour(0)]
Level     = 0.000000
Color     = 34
TrueColor = 2841228
LineType  = CONTINUOUS
LineWidth = 0.200000
Annotate  = 1

[Contour(1)]
Level     = 2.000000
Color     = 140
TrueColor = 14267215
LineType  = CONTINUOUS
LineWidth = 0.150000
Annotate  = 1

[Contour(2)]
Level     = 3.000000
Color     = 142
TrueColor = 13145391
LineType  = DASHED
LineWidth = 0.100000
Annotate  = 0

[Contour(3)]
Level     = 5.000000
Color     = 152
TrueColor = 11564315
LineType  = CONTINUOUS
LineWidth = 0.150000
Annotate  = 1

[Contour(4)]
Level     = 7.000000
Color     = 154
TrueColor = 9591317
LineType  = DOTTED
LineWidth = 0.100000
Annotate  = 0
