#pragma once

#include <QProcess>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace tests {

/// One entry of a ZIP file to be made. A name that ends in "/" is a folder.
struct ZipItem {
    std::string name;
    std::string content = {};
    std::string time = "2019-06-01 10:20:30";
};

/// Runs a program in `folder` with `input`, and throws when it does not end well.
inline void RunTool(const QString& program, const QStringList& arguments, const std::filesystem::path& folder,
                    const QByteArray& input = {}) {
    QProcess process;
    process.setWorkingDirectory(QString::fromStdString(folder.string()));
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(120000) || process.exitCode() != 0)
        throw std::runtime_error(program.toStdString() + ": " + process.readAll().toStdString());
}

/// Makes a ZIP file with Python's zipfile.
inline void MakeZip(const std::filesystem::path& file, const std::vector<ZipItem>& items) {
    static const char* const kScript = R"(
import sys, zipfile
with zipfile.ZipFile(sys.argv[1], 'w', zipfile.ZIP_DEFLATED) as archive:
    for line in sys.stdin.read().split('\n'):
        if line:
            name, time, content = line.split('\t')
            date, clock = time.split(' ')
            info = zipfile.ZipInfo(name, tuple(map(int, date.split('-') + clock.split(':'))))
            info.compress_type = zipfile.ZIP_DEFLATED if content else zipfile.ZIP_STORED
            archive.writestr(info, bytes.fromhex(content))
)";
    QByteArray input;
    for (const ZipItem& item : items)
        input += QByteArray::fromStdString(item.name + '\t' + item.time + '\t') +
                 QByteArray::fromStdString(item.content).toHex() + '\n';
    RunTool(QStringLiteral("python3"),
            {QStringLiteral("-c"), QString::fromUtf8(kScript), QString::fromStdString(file.string())},
            file.parent_path(), input);
}

/// Adds an entry with the traditional encryption to a ZIP file, made when missing, with 7-Zip: its header can
/// be checked against the CRC, which the zip program's cannot.
inline void AddEncrypted(const std::filesystem::path& file, const std::string& name,
                         const std::string& content, const std::string& password) {
    const std::filesystem::path folder = file.parent_path() / "encrypted";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / name, std::ios::binary) << content;
    RunTool(QStringLiteral("7zz"),
            {QStringLiteral("a"), QStringLiteral("-tzip"), QStringLiteral("-mem=ZipCrypto"),
             QStringLiteral("-p") + QString::fromStdString(password), QString::fromStdString(file.string()),
             QString::fromStdString(name)},
            folder);
    std::filesystem::remove_all(folder);
}

} // namespace tests
