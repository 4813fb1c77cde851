[Contour(0)]
Level     = 0.000000
Color     = 34
TrueColor = 2841228
LineType  = CONTINUOUS
LineWidth = 0.500000
Annotate  = 1

[Contour(1)]
Level     = 1.000000
Color     = 140
TrueColor = 14267215
LineType  = DASHED
LineWidth = 0.180000
Annotate  = 0

[Contour(2)]
Level     = 2.000000
Color     = 140
TrueColor = 14267215
LineType  = CONTINUOUS
LineWidth = 0.250000
Annotate  = 1

[Contour(3)]
Level     = 3.000000
Color     = 142
TrueColor = 13145391
LineType  = DASHED
LineWidth = 0.180000
Annotate  = 0

[Contour(4)]
Level     = 4.000000
Color     = 142
TrueColor = 13145391
LineType  = DASHED
LineWidth = 0.180000
Annotate  = 0

[Contour(5)]
Level     = 5.000000
Color     = 152
TrueColor = 11564315
LineType  = CONTINUOUS
LineWidth = 0.350000
Annotate  = 1

[Contour(6)]
Level     = 6.000000
Color     = 152
TrueColor = 11564315
LineType  = DASHED
LineWidth = 0.180000
Annotate  = 0

[Contour(7)]
Level     = 8.000000
Color     = 154
TrueColor = 9591317
LineType  = DASHED
LineWidth = 0.180000
Annotate  = 0

[Contour(8)]
Level     = 10.000000
Color     = 154
TrueColor = 7881743
LineType  = CONTINUOUS
LineWidth = 0.350000
Annotate  = 1

[Contour(9)]
Level     = 12.000000
Color     = 156
TrueColor = 6304267
LineType  = DOTTED
LineWidth = 0.180000
Annotate  = 0

[Contour(10)]
Level     = 15.000000
Color     = 156
TrueColor = 4727303
LineType  = CONTINUOUS
LineWidth = 0.350000
Annotate  = 1

