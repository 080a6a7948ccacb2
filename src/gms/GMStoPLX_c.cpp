#include "plxutils/c/GMStoPLX.h"

#include "plxutils/gms/GMStoPLX.h"

namespace {

/// Does `work` on an object, if there is one, lets nothing out and gives the object back.
template <class Work>
GMStoPLX* on_object(GMStoPLX* object, Work work) {
    try {
        if (object) work(*object);
    } catch (...) {
        // The caller learns nothing from here; what can be said was said through the error hook.
    }
    return object;
}

}  // namespace

GMStoPLX* GMStoPLX_new(void) {
    try {
        return new GMStoPLX;
    } catch (...) {
        return nullptr;
    }
}

void GMStoPLX_delete(GMStoPLX* object) {
    try {
        delete object;
    } catch (...) {
        // As above.
    }
}

GMStoPLX* GMStoPLX_Set_Project(GMStoPLX* object, const char* path) {
    return on_object(object, [path](GMStoPLX& converter) { converter.SetProject(path); });
}

GMStoPLX* GMStoPLX_Set_Destination(GMStoPLX* object, const char* path) {
    return on_object(object, [path](GMStoPLX& converter) { converter.SetDestination(path); });
}

GMStoPLX* GMStoPLX_Compress(GMStoPLX* object, int compress) {
    return on_object(object, [compress](GMStoPLX& converter) { converter.compress = compress != 0; });
}

GMStoPLX* GMStoPLX_Use_Subfolders(GMStoPLX* object, int use) {
    return on_object(object, [use](GMStoPLX& converter) { converter.useSubfolders = use != 0; });
}

GMStoPLX* GMStoPLX_Object_Types(GMStoPLX* object, int modflow, int mt3d, int femwater, int image, int scat3d,
                                int scat2d, int grid2d, int tin, int borehole) {
    return on_object(object, [=](GMStoPLX& converter) {
        converter.convertMODFLOW = modflow != 0;
        converter.convertMT3D = mt3d != 0;
        converter.convertFEMWATER = femwater != 0;
        converter.convertIMAGE = image != 0;
        converter.convertSCAT3D = scat3d != 0;
        converter.convertSCAT2D = scat2d != 0;
        converter.convertGRID2D = grid2d != 0;
        converter.convertTIN = tin != 0;
        converter.convertBOREHOLE = borehole != 0;
    });
}

GMStoPLX* GMStoPLX_Extents(GMStoPLX* object, int enable, double xmin, double ymin, double xmax, double ymax) {
    return on_object(object, [=](GMStoPLX& converter) {
        converter.cropToExtents = enable != 0;
        converter.xmin = xmin;
        converter.ymin = ymin;
        converter.xmax = xmax;
        converter.ymax = ymax;
    });
}

GMStoPLX* GMStoPLX_Lenient_Datasets(GMStoPLX* object, int on) {
    return on_object(object, [on](GMStoPLX& converter) { converter.lenientDatasets = on != 0; });
}

GMStoPLX* GMStoPLX_Choose_Time(GMStoPLX* object, int enable, double time) {
    return on_object(object, [=](GMStoPLX& converter) {
        converter.useChosenTime = enable != 0;
        converter.chosenTime = time;
    });
}

GMStoPLX* GMStoPLX_parse_project(GMStoPLX* object) {
    return on_object(object, [](GMStoPLX& converter) { converter.parse_header(); });
}
