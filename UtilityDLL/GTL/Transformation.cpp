#include "UtilityDLL/GTL/Transformation.h"

#include "UtilityDLL/GTL/Point2D.h"
#include "UtilityDLL/GTL/Point3D.h"

template class GTL::Transformation<GTL::Point2D<int>>;
template class GTL::Transformation<GTL::Point2D<float>>;
template class GTL::Transformation<GTL::Point2D<double>>;
template class GTL::Transformation<GTL::Point3D<float>>;
template class GTL::Transformation<GTL::Point3D<double>>;
