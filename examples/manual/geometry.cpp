// SPDX-License-Identifier: MIT
// Where soundings are, what is near them, and the same turned, moved and in other
// units.
#include <UtilityDLL/GTL/Extents2D.h>
#include <UtilityDLL/GTL/Rectangle.h>
#include <UtilityDLL/GTL/Transformation2D.h>
#include <UtilityDLL/GTL/UnitType.h>

#include <iostream>

using Point = GTL::Point2D<double>;

int main() {
    GTL::Extents2D<double> survey; // empty, and not valid, until something is added
    for (const Point& sounding : {Point(100, 200), Point(180, 260), Point(140, 320)})
        survey.Update(sounding);
    std::wcout << survey.ExtentX() << L" x " << survey.ExtentY() << L" m about "
               << survey.Center().X() << L", " << survey.Center().Y() << L'\n';
    std::wcout << (survey.Classify(Point(180, 320)) == GTL::CLS::INSIDE
                       ? L"the edge is inside\n"
                       : L"outside\n");

    GTL::Transformation2D<Point> turn;
    turn.Rotate(90, survey.Center()); // clockwise
    turn.Translate(1000, 0);          // and then moved
    Point corner = survey.MinPnt();
    corner.Transform(turn);
    std::wcout << L"the lower left corner comes to " << corner.X() << L", "
               << corner.Y() << L'\n';

    const Angle course(350);
    std::wcout << L"20 degrees on: " << (course + 20).Get()
               << L", from there back to it: " << (course + 20).Difference(course).Get()
               << L'\n';

    const GTL::Rectangle<Point> berth(Point(0, 0), 40, 10,
                                      30); // turned clockwise about its origin
    std::wcout << (berth.Classify(Point(20, -5)) == GTL::CLS::INSIDE
                       ? L"in the berth\n"
                       : L"beside the berth\n");

    std::wcout << L"12 feet are " << UnitType::Convert(UnitType::FEET, UnitType::M, 12)
               << L" m\n";
}
