#include "support/recorder_file.h"

#include <windows.h>

#include <fstream>
#include <iterator>

namespace zk::support {
namespace {

// Each recording gets a file of its own, so that late writers of an earlier one never mix in.
int g_recording = 0;

std::wstring RecordFile() {
    wchar_t temp[MAX_PATH] = {};
    ::GetTempPathW(MAX_PATH, temp);
    return std::wstring(temp) + L"zk-records-" + std::to_wstring(::GetCurrentProcessId()) + L"-" +
           std::to_wstring(g_recording) + L".txt";
}

}  // namespace

Text TestFolder() {
    wchar_t module[MAX_PATH] = {};
    ::GetModuleFileNameW(nullptr, module, MAX_PATH);
    const std::wstring path = module;
    return Text(path.begin(), path.begin() + static_cast<long>(path.find_last_of(L'\\')));
}

Text RecorderPath() {
    return TestFolder() + u"\\recorder.exe";
}

void StartRecording() {
    ++g_recording;
    ::DeleteFileW(RecordFile().c_str());
    ::SetEnvironmentVariableW(L"ZK_RECORD_FILE", RecordFile().c_str());
}

std::optional<Record> LastRecord() {
    std::ifstream in(RecordFile().c_str(), std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(in), {});
    Text text(bytes.size() / 2, u'\0');
    std::copy(bytes.begin(), bytes.begin() + static_cast<long>(text.size() * 2),
              reinterpret_cast<char*>(text.data()));
    if (text.empty()) return std::nullopt;
    text.pop_back();  // the line's end
    const Text line = text.substr(text.find_last_of(u'\n') + 1);
    const auto tab1 = line.find(u'\t'), tab2 = line.find(u'\t', tab1 + 1);
    if (tab2 == Text::npos) return std::nullopt;
    return Record{line.substr(0, tab1), line.substr(tab1 + 1, tab2 - tab1 - 1),
                  line.substr(tab2 + 1)};
}

}  // namespace zk::support
