// The C interface and the classes in one file, the C interface first.
#include "plxutils/c/plxutils_c.h"
//
#include <cstddef>
#include <stdexcept>
#include <type_traits>

#include "capi/checks.h"
#include "plxutils/PLXUtils.h"
#include "support/host_system.h"

namespace {

[[noreturn]] void fail() { throw std::runtime_error("the host's fault"); }

// Lists and numbers of later versions may be asked for.
static_assert(std::is_same_v<std::underlying_type_t<PLX_ReportTexts>, int> &&
              std::is_same_v<std::underlying_type_t<PLX_ReportNumber>, int>);

int calls = 0;

void on_text(const char*) {
    ++calls;
    fail();
}
double on_prompt(const char*) { fail(); }
void on_step(int, int, void*) { on_text(nullptr); }

/// A service of the host that throws leaves the matrix as it was.
void test_services() {
    PLX_HostServices services{};
    services.size = sizeof services;
    services.MATmat4_identity = [](float*) { on_text(nullptr); };
    check(PLX_set_host_services(&services) == 1, "services are taken");
    calls = 0;
    longestEdgeFirst = false;
    cgTriangle triangle(cgPoint(0, 0, 0, 0), cgPoint(4, 0, 0, 0), cgPoint(0, 4, 0, 0));
    const double distance = triangle.GetSignedDistance(cgPoint(1, 1, 2, 0), nullptr);
    check(calls > 0 && distance > 1.9999 && distance < 2.0001, "the identity is there all the same");
    // The entry that is cut in two is none.
    services.size = offsetof(PLX_HostServices, MATmat4_identity) + 3;
    check(PLX_set_host_services(&services) == 1, "services of another version");
    calls = 0;
    triangle.GetSignedDistance(cgPoint(1, 1, 2, 0), nullptr);
    check(calls == 0, "half an entry");
    longestEdgeFirst = true;
    PLX_set_host_services(nullptr);
}

}  // namespace

void test_throwing(const char* model) {
    // There the library has a runtime of its own, which does not know what the host's throws.
    if (plx::test::kWindows) return;
    GMS_SetPromptFunc(on_prompt);
    check(GMS_PromptValue("x") == 0.0, "a prompt that throws");
    GMS_SetPromptFunc(nullptr);

    GMS_SetStatusFunc(on_text);
    GMS_SetErrorFunc(on_text);
    GMStoPLX* const object = GMStoPLX_Set_Destination(GMStoPLX_new(), in_folder(""));
    GMStoPLX_delete(GMStoPLX_parse_project(GMStoPLX_Set_Project(object, in_folder("site.gpr"))));
    check(calls > 8, "hooks that throw hear everything");
    check(take("tin_hill_elevation.gmf", "0.000000 1.000000 3.000000"), "the surface is written");
    take("tin_hill_elevation.pff", "");
    GMS_SetStatusFunc(nullptr);
    GMS_SetErrorFunc(nullptr);

    calls = 0;
    const int outputs[11] = {};
    PLX_ConversionReport* const report = PLX_convert_modflow(model, "auto", outputs, nullptr, 0, nullptr, 0,
                                                             "modflow", in_folder(""), on_step, nullptr);
    check(calls == 3 && PLX_report_number(report, PLX_REPORT_STEPS) == 3, "steps that throw");
    remove_results(report);
    test_services();
}
