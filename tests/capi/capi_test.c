#define _DEFAULT_SOURCE
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include "plxutils/c/GMSCallbacks.h"
#include "plxutils/c/GMStoPLX.h"
#include "plxutils/c/GeoRef.h"

static int failures = 0;
static int statuses = 0, tin_lines = 0, errors = 0;
static char last_error[8192];

static void check(int good, const char* what) {
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

static double answer(const char* question) { return strcmp(question, "x") == 0 ? 2.5 : 0.0; }

static void write_file(const char* folder, const char* name, const char* text) {
    char path[512];
    FILE* file;
    snprintf(path, sizeof path, "%s/%s", folder, name);
    file = fopen(path, "wb");
    if (file == NULL || fputs(text, file) < 0 || fclose(file) != 0) check(0, path);
}

/* Bytes of the file from the text's first place on; removes it. */
static int holds(const char* folder, const char* name, const char* text) {
    char path[512], bytes[4096];
    size_t length = 0;
    FILE* file;
    snprintf(path, sizeof path, "%s/%s", folder, name);
    file = fopen(path, "rb");
    if (file != NULL) {
        length = fread(bytes, 1, sizeof bytes - 1, file);
        fclose(file);
        remove(path);
    }
    bytes[length] = '\0';
    return strstr(bytes, text) != NULL;
}

static void test_null_handles(void) {
    GMStoPLX_delete(NULL);
    check(GMStoPLX_Set_Project(NULL, "a") == NULL, "Set_Project of null");
    check(GMStoPLX_Set_Destination(NULL, "a") == NULL, "Set_Destination of null");
    check(GMStoPLX_Compress(NULL, 1) == NULL, "Compress of null");
    check(GMStoPLX_Use_Subfolders(NULL, 1) == NULL, "Use_Subfolders of null");
    check(GMStoPLX_Object_Types(NULL, 1, 1, 1, 1, 1, 1, 1, 1, 1) == NULL, "Object_Types of null");
    check(GMStoPLX_Extents(NULL, 1, 0, 0, 1, 1) == NULL, "Extents of null");
    check(GMStoPLX_Lenient_Datasets(NULL, 1) == NULL, "Lenient_Datasets of null");
    check(GMStoPLX_Choose_Time(NULL, 1, 2.0) == NULL, "Choose_Time of null");
    check(GMStoPLX_parse_project(NULL) == NULL, "parse_project of null");
}

static void test_null_georef(void) {
    double x = 7, **maps = NULL;
    char name[] = "a.tif";
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

/* Two control points of a similarity go out to files and come back. */
static void test_georef(const char* folder) {
    char name[512];
    double sx, sy, dx, dy, **maps = NULL;
    GeoRef* object = GeoRef_new(2);
    check(GeoRef_set_gcp_values(object, 0, 0, 0, 100, 200) == 1, "the first point");
    check(GeoRef_set_gcp_values(object, 1, 10, 20, 140, 210) == 1, "the second point");
    check(GeoRef_set_gcp_values(object, 2, 1, 1, 1, 1) == 0, "there is no third point");
    check(GeoRef_process_type(object, 2) == 1, "a fit");
    check(GeoRef_project_point(object, 10, -20, &dx, &dy) == 1 && dx == 140 && dy == 210, "a projection");
    check(GeoRef_rms_total_error(object) < 1e-9 && GeoRef_rms_error(object, 1) < 1e-9, "an exact fit");
    snprintf(name, sizeof name, "%s/site.tif", folder);
    check(GeoRef_write_gcp(object, name) == 1 && strstr(name, "/site.gcp") != NULL, name);
    check(GeoRef_load_gcp_mappings(&maps, name, 0, 0) == 2, "two mappings");
    check(GeoRef_get_gcp_mapping(&maps, 1, &sx, &sy, &dx, &dy) == 1, "the second mapping");
    check(sx == 140 && sy == -210 && dx == 10 && dy == -20, "columns of a GCP file");
    check(GeoRef_free_gcp_mappings(&maps, 2) == 1 && maps == NULL, "the list is released");
    check(holds(folder, "site.gcp", "100.000000\t-200.000000\t0.000000\t-0.000000\n"), "the GCP file");
    check(GeoRef_delete(object) == 1, "the object is released");
}

static void test_prompt(void) {
    check(GMS_PromptValue("x") == 0.0, "nobody answers");
    GMS_SetPromptFunc(answer);
    check(GMS_PromptValue("x") == 2.5, "the answer comes back");
    GMS_SetPromptFunc(NULL);
}

static void test_conversion(const char* folder) {
    char path[512];
    GMStoPLX* object = GMStoPLX_new();
    check(object != NULL, "a converter is made");
    write_file(folder, "site.gpr", "TIN hill.tin\n");
    write_file(folder, "hill.tin",
               "TIN\nBEGT\nTNAM hill\nID 1\nVERT 3\n0 0 1\n1 0 2\n0 1 3\nTRI 1\n1 2 3\nENDT\n");

    check(GMStoPLX_Set_Destination(object, NULL) == object, "calls can be chained");
    check(strcmp(last_error, "GMStoPLX : set_destination - [] Invalid Directory Name!\n") == 0, last_error);
    snprintf(path, sizeof path, "%s/site.gpr", folder);
    errors = 0;
    object = GMStoPLX_Set_Destination(GMStoPLX_Set_Project(object, path), folder);
    object = GMStoPLX_Extents(GMStoPLX_Use_Subfolders(GMStoPLX_Compress(object, 0), 0), 0, 0, 0, 0, 0);
    object = GMStoPLX_Object_Types(object, 0, 0, 0, 0, 0, 0, 0, 1, 0);
    check(GMStoPLX_parse_project(object) == object, "parse_project returns the object");
    check(errors == 0, last_error);
    check(tin_lines == 1 && statuses > 8, "status texts arrive");
    check(holds(folder, "tin_hill_elevation.gmf", "0.000000 1.000000 3.000000"), "the surface");
    check(holds(folder, "tin_hill_elevation.pff", "CELL_SET_DEF 0 1 Tri \"TIN\" IN_FILE"), "the field file");
    holds(folder, "hill.tin", "");
    holds(folder, "site.gpr", "");
    GMStoPLX_delete(object);
}

int main(void) {
    char folder[] = "/tmp/plx_capi_XXXXXX";
    test_null_handles();
    test_null_georef();
    test_prompt();
    if (mkdtemp(folder) == NULL) return 1;
    GMS_SetStatusFunc(on_status);
    GMS_SetErrorFunc(on_error);
    test_conversion(folder);
    test_georef(folder);
    check(rmdir(folder) == 0, "nothing else was written");
    return failures != 0;
}
