#pragma once

#include "plxutils/c/ModelConversion.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Prints what failed; the program's result tells that something did. */
void check(int good, const char* what);
/* One call whose result is fixed, for tables. */
typedef struct Result {
    const char* call;
    double got, expected;
} Result;
void check_results(const Result* results, int count);

/* The path of a name in the folder of the test, or of the folder; good until the next call. */
const char* in_folder(const char* name);
void write_file(const char* name, const char* text);
/* Whether a file of the folder holds the text before its first zero byte; removes the file. */
int take(const char* name, const char* text);

/* Removes the files of a report, and the report. */
void remove_results(PLX_ConversionReport* report);

void test_texts(void);
void test_models(const char* model);
/* C++: callbacks that throw. */
void test_throwing(const char* model);

#ifdef __cplusplus
}
#endif
