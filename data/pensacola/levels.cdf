[Contour(0)]
Level     = 0.000000
Color     = 45
TrueColor = 4615800
LineType  = CONTINUOUS
LineWidth = 0.200000
Annotate  = 1

[Contour(1)]
Level     = 1.000000
Color     = 155
TrueColor = 9205852
LineType  = CONTINUOUS
LineWidth = 0.100000
Annotate  = 0

[Contour(2)]
Level     = 2.000000
Color     = 155
TrueColor = 9205852
LineType  = CONTINUOUS
LineWidth = 0.180000
Annotate  = 1

[Contour(3)]
Level     = 3.000000
Color     = 155
TrueColor = 9205852
LineType  = CONTINUOUS
LineWidth = 0.100000
Annotate  = 0

[Contour(4)]
Level     = 5.000000
Color     = 155
TrueColor = 9205852
LineType  = CONTINUOUS
LineWidth = 0.180000
Annotate  = 1

[Contour(5)]
Level     = 8.000000
Color     = 155
TrueColor = 9205852
LineType  = CONTINUOUS
LineWidth = 0.100000
Annotate  = 0

[Contour(6)]
Level     = 10.000000
Color     = 155
TrueColor = 9205852
LineType  = CONTINUOUS
LineWidth = 0.180000
Annotate  = 1

[Contour(7)]
Level     = 12.000000
Color     = 155
TrueColor = 9205852
LineType  = CONTINUOUS
LineWidth = 0.100000
Annotate  = 0

[Contour(8)]
Level     = 15.000000
Color     = 155
TrueColor = 9205852
LineType  = CONTINUOUS
LineWidth = 0.180000
Annotate  = 1

[Contour(9)]
Level     = 20.000000
Color     = 155
TrueColor = 9205852
LineType  = CONTINUOUS
LineWidth = 0.180000
Annotate  = 1

