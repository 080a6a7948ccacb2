#include <math.h>
#include <stdio.h>
#include <string.h>

#include "capi/checks.h"
#include "plxutils/c/plxutils_c.h"

static int errors_heard = 0, steps_done = 0, steps_expected = 0;

static void count_error(const char* text) {
    (void)text;
    ++errors_heard;
}

static void on_step(int done, int total, void* user) {
    steps_done = done;
    steps_expected = total;
    ++*(int*)user;
    GMS_SetErrorFunc(NULL);
}

static PLX_ConversionReport* convert(const char* model, const int* outputs, const double* extents,
                                     int* calls) {
    return PLX_convert_modflow(model, "auto", outputs, NULL, 0, extents, 0, NULL, in_folder(""), on_step,
                               calls);
}

void remove_results(PLX_ConversionReport* report) {
    char name[1024];
    for (int i = 0; i < PLX_report_count(report, PLX_REPORT_FILES); ++i) {
        PLX_report_text(report, PLX_REPORT_FILES, i, name, sizeof name);
        check(remove(name) == 0, name);
    }
    PLX_report_delete(report);
}

static void test_reports(const char* model) {
    char text[8];
    int calls = 0;
    PLX_ConversionReport* const report = convert(model, NULL, NULL, &calls);
    const Result results[] = {
        {"errors", PLX_report_count(report, PLX_REPORT_ERRORS), 0},
        {"steps", (double)PLX_report_number(report, PLX_REPORT_STEPS), 3},
        {"transport times", (double)PLX_report_number(report, PLX_REPORT_TRANSPORT_TIMES), 2},
        {"calls", calls, 5},
        {"expected of the flow", steps_expected, 3},
        {"done of the flow", steps_done, 3},
        {"files", PLX_report_count(report, PLX_REPORT_FILES) >= 9, 1},
        {"bytes", PLX_report_number(report, PLX_REPORT_BYTES) > 1000, 1},
        {"an unknown list", PLX_report_count(report, (PLX_ReportTexts)3), 0},
        {"an unknown number", (double)PLX_report_number(report, (PLX_ReportNumber)5), 0},
        {"a text before the first", PLX_report_text(report, PLX_REPORT_FILES, -1, text, 8), -1},
        {"a text behind the last", PLX_report_text(report, PLX_REPORT_ERRORS, 0, text, 8), -1},
        {"a length", PLX_report_text(report, PLX_REPORT_FILES, 0, NULL, 0) > 8, 1},
        {"no report", PLX_report_count(NULL, PLX_REPORT_FILES), 0},
        {"no number", (double)PLX_report_number(NULL, PLX_REPORT_NODES), 0},
        {"no text", PLX_report_text(NULL, PLX_REPORT_FILES, 0, text, 8), -1},
    };
    check_results(results, sizeof results / sizeof *results);
    check(PLX_report_text(report, PLX_REPORT_FILES, 0, text, 8) > 8 && strlen(text) == 7, "a cut text");
    remove_results(report);
    PLX_report_delete(NULL);
}

static const int flows_missing[11] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0};
static const double reversed[4] = {5, 0, 1, 1}, unknown[4] = {0, 0, NAN, 1}, share[1] = {1.5};

/* Arguments that cannot be used: an error each, and nothing is written. */
static void test_refusals(const char* model) {
    const struct {
        const char *project, *kind;
        const int* outputs;
        const double *porosity, *extents;
        const char *rules, *destination, *error;
    } cases[] = {
        {NULL, NULL, NULL, NULL, NULL, NULL, NULL, "an empty path names no file"},
        {"none.nam", NULL, NULL, NULL, NULL, NULL, NULL, "'none.nam' does not exist"},
        {".", NULL, NULL, NULL, NULL, NULL, NULL, "'.' is a folder; give the model's name file in it"},
        {model, "kinds", NULL, NULL, NULL, NULL, NULL,
         "kind 'kinds' is not known; the kinds are auto, modflow, modflow2000, gms, gms_hdf5, visual"},
        {model, "gms", NULL, NULL, NULL, NULL, NULL, "those of kind gms end in .mfs"},
        {model, "auto", NULL, NULL, NULL, "strict", NULL, "rules 'strict' are not known"},
        {model, "auto", NULL, share, NULL, NULL, NULL, "porosity: values are fractions from 0 to 1"},
        {model, "auto", flows_missing, NULL, NULL, NULL, NULL, "boundary_flows needs ccf"},
        {model, "auto", NULL, NULL, reversed, NULL, NULL, "xmin must not exceed xmax"},
        {model, "auto", NULL, NULL, unknown, NULL, NULL, "coordinates must be finite"},
        {model, "auto", NULL, NULL, NULL, NULL, "nowhere", "'nowhere' does not exist"},
        {model, "auto", NULL, NULL, NULL, NULL, model, "is not a folder"},
    };
    for (size_t i = 0; i < sizeof cases / sizeof *cases; ++i) {
        char text[1024] = "no error";
        PLX_ConversionReport* const report =
            PLX_convert_modflow(cases[i].project, cases[i].kind, cases[i].outputs, cases[i].porosity, 1,
                                cases[i].extents, 0, cases[i].rules, cases[i].destination, NULL, NULL);
        PLX_report_text(report, PLX_REPORT_ERRORS, 0, text, sizeof text);
        check(strstr(text, cases[i].error) != NULL, text);
        check(PLX_report_count(report, PLX_REPORT_FILES) == 0, cases[i].error);
        PLX_report_delete(report);
    }
}

/* An error that is told through the hook only comes into the report, and the host hears it as before. */
static void test_errors(const char* model) {
    const double nowhere[4] = {-9, -9, -8, -8};
    const char* const warnings[] = {"no porosity is known; 0.0 was written",
                                    "no active cell lies in the extents"};
    char text[64] = "";
    const int materials[11] = {[5] = 1}, porosity[11] = {[7] = 1};
    int calls = 0;
    GMS_SetErrorFunc(count_error);
    PLX_ConversionReport* report =
        PLX_convert_modflow(model, NULL, materials, NULL, 0, NULL, 1, NULL, in_folder("blocked"), NULL, NULL);
    check(PLX_report_count(report, PLX_REPORT_ERRORS) > 0 && errors_heard > 0, "folders that cannot be made");
    PLX_report_delete(report);
    GMS_SetErrorFunc(NULL);
    report = convert(model, porosity, nowhere, &calls);
    for (int i = 0; i < 2; ++i) {
        PLX_report_text(report, PLX_REPORT_WARNINGS, i, text, sizeof text);
        check(strcmp(text, warnings[i]) == 0, warnings[i]);
    }
    check(PLX_report_count(report, PLX_REPORT_ERRORS) == 0, "nothing is incomplete");
    remove_results(report);
}

/* A host that names a file while it is asked for its paths, and takes its services away meanwhile. */
static int two_paths(void) {
    char name[1024] = "$XP_PATH<1>/y";
    FixFilenameString(name);
    check(strcmp(name, "\\y") == 0, name);
    return 2;
}
static const char* path_of(int index) {
    PLX_set_host_services(NULL);
    return index == 0 ? NULL : "C:/Host";
}

static void test_host_services(void) {
    char name[1024] = "$XP_PATH<2>/x";
    PLX_HostServices services = {sizeof services, two_paths, path_of, NULL, NULL, NULL, NULL, NULL};
    PLX_HostServices cut = {0, NULL, NULL, NULL, NULL, NULL, NULL, NULL};
    check(PLX_set_host_services(&services) == 1 && PLX_set_host_services(&cut) == 0, "services");
    FixFilenameString(name);
    check(strcmp(name, "C:\\Host\\x") == 0, name);
    check(PLX_set_host_services(NULL) == 1, "no services");
    strcpy(name, "$XP_PATH<1>/x");
    FixFilenameString(name);
    check(strcmp(name, "\\x") == 0, "the list was taken before");
}

void test_models(const char* model) {
    test_reports(model);
    test_refusals(model);
    test_errors(model);
    test_host_services();
}
