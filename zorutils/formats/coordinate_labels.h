// zorutils/formats/coordinate_labels.h: one coordinate as a small XML fragment.
//
//     struct Plane : ICoordInfo
//     {
//         bool hasHorizontal() const override { return true; }
//         bool hasHeight() const override { return false; }
//     };
//     formNECoordinates(Plane(), 5478123.4, 3412.75, 0.0, ZOR_W("Point"), 3);
//
//     <Point>
//         <NE>
//             <Northing>5478123.400</Northing>
//             <Easting>3412.750</Easting>
//         </NE>
//     </Point>
//
// Lines end with CR LF and are indented by one tab for each tag that is open when the call comes,
// as the forming members of CXmlParserBase count them; numbers have "." whatever the locale.
//
// Errors: std::bad_alloc. Threads: the indent is one for the process, so one document is formed at
// a time.
#pragma once

#include "zorutils/core/zor_api.h"
#include "zorutils/zortext/zor_string.h"

// Which parts a coordinate has. The order of the operations is part of the interface. Both are
// asked several times in one call and must give the same answers throughout.
class ICoordInfo
{
public:
    virtual bool hasHorizontal() const = 0; // the two plane components
    virtual bool hasHeight() const = 0;

protected:
    ~ICoordInfo() = default;
};

// The components that the coordinate has, each with `precision` decimals, in a tag for the kind of
// coordinate (FullWGS, Height or LatLon) in a tag called `name`. Empty, with the indent untouched,
// for a coordinate that has neither part or for a null name.
ZOR_API zor_text::CZorStringT<WCHAR> formLatLonCoordinates(const ICoordInfo& info, double lat,
                                                           double lon, double height,
                                                           const WCHAR* name, int precision);

// The same with northing and easting (Full, Height or NE); but a null name is written as an empty
// one, on purpose. Both forms call the height Ellipsoidal.
ZOR_API zor_text::CZorStringT<WCHAR> formNECoordinates(const ICoordInfo& info, double northing,
                                                       double easting, double height,
                                                       const WCHAR* name, int precision);
