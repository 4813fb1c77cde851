#include "UtilityDLL/GTL/Transformation.h"

#include "UtilityDLL/GTL/Point2D.h"
#include "UtilityDLL/GTL/Point3D.h"

GTL_TEMPLATE(GTL::Transformation<GTL::Point2D<int>>);
GTL_TEMPLATE(GTL::Transformation<GTL::Point2D<float>>);
GTL_TEMPLATE(GTL::Transformation<GTL::Point2D<double>>);
GTL_TEMPLATE(GTL::Transformation<GTL::Point3D<float>>);
GTL_TEMPLATE(GTL::Transformation<GTL::Point3D<double>>);
