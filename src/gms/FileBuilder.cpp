#include "plxutils/gms/FileBuilder.h"

FileBuilder::~FileBuilder() = default;

void FileBuilder::AddFile(const char* path) { sourceFiles.emplace_back(path); }
