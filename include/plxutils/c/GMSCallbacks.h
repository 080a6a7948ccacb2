#pragma once

#include "plxutils/export.h"

/* Progress, status, error and prompt hooks of the host. A registered function replaces the one before; null
 * switches the hook off. The slots are shared by the whole process and are not guarded: register before a
 * conversion starts. Texts arrive as their authors wrote them, with or without a line end. */

#ifdef __cplusplus
extern "C" {
#endif

typedef double (*GMS_PromptFunc)(const char* question);
typedef void (*GMS_MessageFunc)(const char* message);
typedef void (*GMS_StartProgressFunc)(int first, int last);
typedef void (*GMS_ProgressFunc)(int value);

PLX_EXPORT void GMS_SetPromptFunc(GMS_PromptFunc function);
PLX_EXPORT void GMS_SetErrorFunc(GMS_MessageFunc function);
PLX_EXPORT void GMS_SetStatusFunc(GMS_MessageFunc function);
PLX_EXPORT void GMS_SetStartProgressFunc(GMS_StartProgressFunc function);
PLX_EXPORT void GMS_SetProgressFunc(GMS_ProgressFunc function);

/* Asks the host for a number; 0.0 when nobody is registered. */
PLX_EXPORT double GMS_PromptValue(const char* question);
PLX_EXPORT void GMS_DoError(const char* message);
PLX_EXPORT void GMS_DoStatus(const char* message);
PLX_EXPORT void GMS_StartProgress(int first, int last);
PLX_EXPORT void GMS_SetProgress(int value);

#ifdef __cplusplus
}
#endif
