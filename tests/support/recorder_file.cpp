#include "support/recorder_file.h"

#include <windows.h>

#include <fstream>
#include <sstream>

namespace zk::support {
namespace {

Text FromUtf8(const std::string& s) {
    if (s.empty()) return {};
    const int n =
        ::MultiByteToWideChar(CP_UTF8, 0, s.data(), static_cast<int>(s.size()), nullptr, 0);
    std::wstring w(static_cast<std::size_t>(n), L'\0');
    ::MultiByteToWideChar(CP_UTF8, 0, s.data(), static_cast<int>(s.size()), w.data(), n);
    return Text(w.begin(), w.end());
}

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
    std::wstring path = module;
    path = path.substr(0, path.find_last_of(L'\\'));
    return Text(path.begin(), path.end());
}

Text RecorderPath() {
    return TestFolder() + u"\\recorder.exe";
}

void StartRecording() {
    ++g_recording;
    const std::wstring file = RecordFile();
    ::DeleteFileW(file.c_str());
    ::SetEnvironmentVariableW(L"ZK_RECORD_FILE", file.c_str());
}

std::vector<Record> ReadRecords() {
    std::vector<Record> records;
    std::ifstream in(RecordFile().c_str(), std::ios::binary);
    std::string line;
    while (std::getline(in, line)) {
        std::vector<std::string> fields;
        std::stringstream ss(line);
        std::string field;
        while (std::getline(ss, field, '\t'))
            fields.push_back(field);
        if (fields.size() < 5) continue;
        records.push_back(Record{FromUtf8(fields[0]), FromUtf8(fields[1]), FromUtf8(fields[2]),
                                 FromUtf8(fields[3]), std::stoi(fields[4])});
    }
    return records;
}

}  // namespace zk::support
