#include <stdio.h>
#include <string.h>

#include "capi/checks.h"
#include "plxutils/c/plxutils_c.h"

static const char* folder = ".";
static int failures = 0;
static int statuses = 0, tin_lines = 0, errors = 0;
static char last_error[8192];

void check(int good, const char* what) {
    if (good) return;
    printf("failed: %s\n", what);
    ++failures;
}

static void on_status(const char* text) {
    ++statuses;
    if (strcmp(text, "TIN file detected! hill.tin\n") == 0) ++tin_lines;
}

static void on_error(const char* text) {
    ++errors;
    snprintf(last_error, sizeof last_error, "%s", text);
}

void check_results(const Result* results, int count) {
    for (int i = 0; i < count; ++i) {
        if (results[i].got == results[i].expected) continue;
        printf("%g instead of %g: ", results[i].got, results[i].expected);
        check(0, results[i].call);
    }
}

const char* in_folder(const char* name) {
    static char path[1024];
    snprintf(path, sizeof path, *name == '\0' ? "%s%s" : "%s/%s", folder, name);
    return path;
}

void write_file(const char* name, const char* text) {
    FILE* const file = fopen(in_folder(name), "wb");
    if (file == NULL || fputs(text, file) < 0 || fclose(file) != 0) check(0, name);
}

int take(const char* name, const char* text) {
    char bytes[4096];
    FILE* const file = fopen(in_folder(name), "rb");
    if (file == NULL) return 0;
    const size_t length = fread(bytes, 1, sizeof bytes - 1, file);
    fclose(file);
    remove(in_folder(name));
    bytes[length] = '\0';
    return strstr(bytes, text) != NULL;
}

static void test_null_handles(void) {
    const Result results[] = {
        {"Set_Project", GMStoPLX_Set_Project(NULL, "a") == NULL, 1},
        {"Set_Destination", GMStoPLX_Set_Destination(NULL, "a") == NULL, 1},
        {"Compress", GMStoPLX_Compress(NULL, 1) == NULL, 1},
        {"Use_Subfolders", GMStoPLX_Use_Subfolders(NULL, 1) == NULL, 1},
        {"Object_Types", GMStoPLX_Object_Types(NULL, 1, 1, 1, 1, 1, 1, 1, 1, 1) == NULL, 1},
        {"Extents", GMStoPLX_Extents(NULL, 1, 0, 0, 1, 1) == NULL, 1},
        {"Lenient_Datasets", GMStoPLX_Lenient_Datasets(NULL, 1) == NULL, 1},
        {"Choose_Time", GMStoPLX_Choose_Time(NULL, 1, 2.0) == NULL, 1},
        {"parse_project", GMStoPLX_parse_project(NULL) == NULL, 1},
        {"PLX_version", strcmp(PLX_version(), PLX_VERSION), 0},
    };
    check_results(results, sizeof results / sizeof *results);
    GMStoPLX_delete(NULL);
}

static void test_null_georef(void) {
    double x = 7, **maps = NULL;
    char name[] = "a.tif";
    check(GeoRef_new(10000001) == NULL, "too many points");
    check(GeoRef_delete(NULL) == 0 && GeoRef_process_type(NULL, 4) == 0, "GeoRef of null");
    check(GeoRef_set_gcp_values(NULL, 0, 1, 2, 3, 4) == 0, "set_gcp_values of null");
    check(GeoRef_project_point(NULL, 1, 2, &x, &x) == 0, "project_point of null");
    check(GeoRef_reverse_project_point(NULL, 1, 2, &x, &x) == 0 && x == 7, "reverse_project_point of null");
    check(GeoRef_rms_error(NULL, 0) + GeoRef_rms_total_error(NULL) == 0.0, "residuals of null");
    check(GeoRef_write_world(NULL, name) + GeoRef_write_gcp(NULL, name) == 0, "files of null");
    check(GeoRef_load_gcp_mappings(NULL, name, 1, 1) == 0, "a list without a place");
    check(GeoRef_load_gcp_mappings(&maps, NULL, 1, 1) == 0, "an image without a name");
    check(parseGCPFile(NULL, NULL, &maps) + parseWorldFile("a.", NULL, NULL, &maps, 1, 1) == 0, "no names");
    check(GeoRef_get_gcp_mapping(&maps, 0, &x, &x, &x, &x) == 0, "a mapping of no list");
    check(GeoRef_free_gcp_mappings(NULL, 3) + GeoRef_free_gcp_mappings(&maps, 3) == 2, "no list is released");
}

static void test_georef(void) {
    double dx, dy;
    GeoRef* object = GeoRef_new(2);
    check(GeoRef_set_gcp_values(object, 0, 0, 0, 100, 200) == 1, "the first point");
    check(GeoRef_set_gcp_values(object, 1, 10, 20, 140, 210) == 1, "the second point");
    check(GeoRef_set_gcp_values(object, 2, 1, 1, 1, 1) == 0, "there is no third point");
    check(GeoRef_process_type(object, 2) == 1, "a fit");
    check(GeoRef_project_point(object, 10, -20, &dx, &dy) == 1 && dx == 140 && dy == 210, "a projection");
    check(GeoRef_rms_total_error(object) < 1e-9 && GeoRef_rms_error(object, 1) < 1e-9, "an exact fit");
    check(GeoRef_delete(object) == 1, "the object is released");
}

static GMStoPLX* surface_converter(void) {
    GMStoPLX* const object = GMStoPLX_new();
    check(object != NULL, "a converter is made");
    write_file("site.gpr", "TIN hill.tin\n");
    write_file("hill.tin", "TIN\nBEGT\nTNAM hill\nID 1\nVERT 3\n0 0 1\n1 0 2\n0 1 3\nTRI 1\n1 2 3\nENDT\n");
    GMStoPLX_Set_Destination(GMStoPLX_Set_Project(object, in_folder("site.gpr")), folder);
    GMStoPLX_Extents(GMStoPLX_Use_Subfolders(GMStoPLX_Compress(object, 0), 0), 0, 0, 0, 0, 0);
    return GMStoPLX_Object_Types(object, 0, 0, 0, 0, 0, 0, 0, 1, 0);
}

static void test_conversion(void) {
    GMStoPLX* const object = surface_converter();
    check(errors == 0, last_error);
    check(GMStoPLX_Set_Destination(object, NULL) == object, "calls can be chained");
    check(strcmp(last_error, "GMStoPLX : set_destination - [] Invalid Directory Name!\n") == 0, last_error);
    check(GMStoPLX_parse_project(object) == object, "parse_project returns the object");
    check(errors == 1, last_error);
    check(tin_lines == 1 && statuses > 8, "status texts arrive");
    check(take("tin_hill_elevation.gmf", "0.000000 1.000000 3.000000"), "the surface");
    check(take("tin_hill_elevation.pff", "CELL_SET_DEF 0 1 Tri \"TIN\" IN_FILE"), "the field file");
    GMStoPLX_delete(object);
}

static GMStoPLX* at_work;
static int before_switch = 0, after_switch = 0;

static void last_status(const char* text) {
    (void)text;
    if (++after_switch == 3) GMS_SetStatusFunc(NULL);
}

static void first_status(const char* text) {
    (void)text;
    ++before_switch;
    GMS_SetStatusFunc(last_status);
    check(GMStoPLX_parse_project(at_work) == at_work, "a project inside a project");
    GMStoPLX_delete(at_work);
    GMStoPLX_Set_Destination(GMStoPLX_Set_Project(at_work, NULL), "nowhere");
    GMStoPLX_Object_Types(at_work, 0, 0, 0, 0, 0, 0, 0, 0, 0);
    check(errors == 1, "options inside a project");
}

/* A hook that replaces itself, whose successor switches itself off, and that ends the object's life. */
static void test_hooks_at_work(void) {
    at_work = surface_converter();
    GMS_SetStatusFunc(first_status);
    GMStoPLX_parse_project(at_work);
    check(before_switch == 1 && after_switch == 3, "each hook hears its part");
    check(take("tin_hill_elevation.gmf", "0.000000 1.000000 3.000000"), "the work goes on");
    take("tin_hill_elevation.pff", "");
    /* Without a project and a destination. */
    at_work = GMStoPLX_new();
    check(GMStoPLX_parse_project(at_work) == at_work, "no project");
    GMStoPLX_delete(at_work);
}

/* usage: test_capi FOLDER MODEL, the name file of a small model */
int main(int count, char** arguments) {
    if (count != 3) return 2;
    folder = arguments[1];
    test_null_handles();
    test_null_georef();
    GMS_SetStatusFunc(on_status);
    GMS_SetErrorFunc(on_error);
    test_conversion();
    test_georef();
    test_hooks_at_work();
    GMS_SetStatusFunc(NULL);
    GMS_SetErrorFunc(NULL);
    test_texts();
    test_models(arguments[2]);
    test_throwing(arguments[2]);
    take("site.gpr", "");
    take("hill.tin", "");
    return failures != 0;
}
