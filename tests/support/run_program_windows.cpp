#define WIN32_LEAN_AND_MEAN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <filesystem>

#include "support/run_program.h"
#include "support/temp_folder.h"

namespace plx::test {

namespace {

/// One word of a command line, as the C runtime takes them apart: a backslash counts only before a quote.
std::wstring quoted(const std::wstring& word) {
    std::wstring text = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t c : word) {
        if (c == L'"') text.append(backslashes + 1, L'\\');
        backslashes = c == L'\\' ? backslashes + 1 : 0;
        text += c;
    }
    return text.append(backslashes, L'\\') + L"\"";
}

std::wstring wide(const std::string& utf8) {
    std::wstring text(utf8.size(), L'\0');
    const int length = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()),
                                           text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

std::string with_line_feeds(const std::string& bytes) {
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        if (bytes[i] != '\r' || i + 1 == bytes.size() || bytes[i + 1] != '\n') text += bytes[i];
    return text;
}

/// A file that a program that is started inherits; closed at the end.
class InheritedFile {
public:
    explicit InheritedFile(const std::filesystem::path& path) {
        SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
        handle_ = CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                              &inherit, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    }
    ~InheritedFile() { CloseHandle(handle_); }
    InheritedFile(const InheritedFile&) = delete;
    InheritedFile& operator=(const InheritedFile&) = delete;
    HANDLE handle() const { return handle_; }

private:
    HANDLE handle_;
};

int exit_code(std::wstring command, const std::string& input, const TempFolder& folder) {
    const InheritedFile in(input.empty() ? "NUL" : input), out(folder.path() / "out"),
        err(folder.path() / "err");
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = in.handle();
    start.hStdOutput = out.handle();
    start.hStdError = err.handle();
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                        &process))
        return -1;
    DWORD code = 0;
    WaitForSingleObject(process.hProcess, INFINITE);
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return code > 255 ? -1 : static_cast<int>(code);
}

}  // namespace

ProgramRun run_program(const std::string& program, const std::vector<std::string>& arguments,
                       const std::string& input) {
    const TempFolder folder;
    std::wstring command = quoted(wide(program));
    for (const std::string& argument : arguments) command += L" " + quoted(wide(argument));
    const int code = exit_code(std::move(command), input, folder);
    return {code, with_line_feeds(folder.read("out")), with_line_feeds(folder.read("err"))};
}

}  // namespace plx::test
