#pragma once

#include "plxutils/export.h"

/* Progress, status, error and prompt hooks of the host. A registered function replaces the one before; null
 * switches the hook off; both may happen at any time, also from inside a hook, and count from the next call
 * on. The slots are shared by the whole process and are not guarded against other threads. A registered
 * function has to stay callable until it is replaced or switched off. Texts arrive as their authors wrote
 * them, with or without a line end, and are gone when the function returns. A C++ exception of the
 * library's own runtime that a hook throws ends there: the work goes on, and a prompt counts as answered with
 * 0.0. Exceptions of another compiler's runtime, longjmp and ending the thread must not leave a hook. */

#ifdef __cplusplus
extern "C" {
#endif

typedef double (*GMS_PromptFunc)(const char* question);
typedef void (*GMS_MessageFunc)(const char* message);
typedef void (*GMS_StartProgressFunc)(int first, int last);
typedef void (*GMS_ProgressFunc)(int value);

/* Who answers questions for a number. */
PLX_EXPORT void GMS_SetPromptFunc(GMS_PromptFunc function);
/* Who hears what went wrong. */
PLX_EXPORT void GMS_SetErrorFunc(GMS_MessageFunc function);
/* Who hears what is being done, each file written included. */
PLX_EXPORT void GMS_SetStatusFunc(GMS_MessageFunc function);
/* Who is told that a piece of work begins and between which values its progress will lie. */
PLX_EXPORT void GMS_SetStartProgressFunc(GMS_StartProgressFunc function);
/* Who is told how far that work has come. */
PLX_EXPORT void GMS_SetProgressFunc(GMS_ProgressFunc function);

/* Asks the host for a number; 0.0 when nobody is registered. A text handed to this function or the next two
 * reaches the hook as it is, null included. */
PLX_EXPORT double GMS_PromptValue(const char* question);
/* Hands a text to the error function. */
PLX_EXPORT void GMS_DoError(const char* message);
/* Hands a text to the status function. */
PLX_EXPORT void GMS_DoStatus(const char* message);
/* Calls the function that is told the beginning of a piece of work. */
PLX_EXPORT void GMS_StartProgress(int first, int last);
/* Calls the function that is told the progress. */
PLX_EXPORT void GMS_SetProgress(int value);

#ifdef __cplusplus
}
#endif
