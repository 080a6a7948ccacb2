#include "plxutils/c/GMStoPLX.h"

#include <vector>

#include "core/c_boundary.h"
#include "plxutils/gms/GMStoPLX.h"

/// The only one that makes and destroys converters.
struct plx::GMStoPLXHandles {
    static GMStoPLX* make() { return new GMStoPLX; }
    static void release(GMStoPLX* object) { delete object; }
};

namespace {

using plx::guarded;

/// An object whose project is being converted; hooks run meanwhile and may call in with it.
struct Running {
    GMStoPLX* object;
    bool delete_afterwards;
};

std::vector<Running>& running() {
    static thread_local std::vector<Running> objects;
    return objects;
}

Running* find_running(const GMStoPLX* object) {
    for (Running& entry : running())
        if (entry.object == object) return &entry;
    return nullptr;
}

/// Does `work` on an object, if there is one, and gives it back. What can be said of a failure was said
/// through the error hook. An object that is at work is left alone: it reads its options all the time.
template <class Work>
GMStoPLX* on_object(GMStoPLX* object, Work work) {
    if (object != nullptr && find_running(object) == nullptr) guarded([&] { work(*object); });
    return object;
}

}  // namespace

GMStoPLX* GMStoPLX_new(void) { return guarded<GMStoPLX*>(nullptr, &plx::GMStoPLXHandles::make); }

void GMStoPLX_delete(GMStoPLX* object) {
    guarded([object] {
        if (Running* const entry = find_running(object)) {
            entry->delete_afterwards = true;
        } else {
            plx::GMStoPLXHandles::release(object);
        }
    });
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
    if (object == nullptr || find_running(object) != nullptr) return object;
    guarded([object] {
        running().push_back({object, false});
        guarded([object] { object->parse_header(); });
        // Conversions that a hook started have ended: the last entry is this one.
        const bool unwanted = running().back().delete_afterwards;
        running().pop_back();
        if (unwanted) GMStoPLX_delete(object);
    });
    return object;
}
