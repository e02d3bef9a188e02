// Any bytes as the file of the programs' mappings. What is used of them can be told apart, is written and
// read back the same, and what is not used is left beside the file before anything takes its place.

#include "mapping/BrokenFile.h"
#include "mapping/MappingDocument.h"
#include "mapping/ProgramsFile.h"
#include "tests/fuzz/support/FuzzFolder.h"

#include <QLoggingCategory>
#include <QSet>

namespace
{

using fuzz::require;
using ProgramsFile::Entry;

bool isSame(const Entry &read, const Entry &written)
{
    const auto kept = [](const QString &text) { return MappingDocument::carriable(text); };
    return read.program == kept(written.program) && read.title == kept(written.title) &&
           read.name == kept(written.name) && read.acts == written.acts;
}

void requireEqual(const ActionTable &read, const ActionTable &written)
{
    for (int button = 0; button < ActionTable::controlCount; ++button) {
        for (const Layer layer : Layers::all) {
            require(read[button][layer] == written[button][layer], "an entry is read back");
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int * /*argc*/, char *** /*argv*/)
{
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const QString path = fuzz::folder() + QStringLiteral("/programs.xml");
    const QString copy = BrokenFile::copyName(path);
    QFile::remove(copy);
    fuzz::write(path, bytes);

    const ProgramsFile::Content first = ProgramsFile::read(path);
    require(first.mayBeWritten, "a file that can be read can be set aside");
    require(QFile::exists(copy) == !first.result, "what is not used is set aside, and nothing else");
    require(first.result || fuzz::content(copy) == bytes, "it is set aside whole");
    QSet<QString> programs;
    for (const Entry &entry : first.entries) {
        require(!entry.program.isEmpty() && !programs.contains(entry.program), "entries are told apart");
        programs.insert(entry.program);
    }

    require(bool(ProgramsFile::write(path, first.entries)), "what was read can be written");
    const ProgramsFile::Content second = ProgramsFile::read(path);
    require(bool(second.result) && second.entries.size() == first.entries.size(), "all are read back");
    // What has been through a file once is as it will be: "empty" stands for every special action without a
    // name.
    require(bool(ProgramsFile::write(path, second.entries)), "it can be written again");
    const ProgramsFile::Content third = ProgramsFile::read(path);
    for (std::size_t i = 0; i < second.entries.size(); ++i) {
        require(isSame(second.entries[i], first.entries[i]), "a program is read back");
        require(isSame(third.entries.at(i), second.entries[i]), "a program is read back again");
        requireEqual(third.entries[i].actions, second.entries[i].actions);
    }
    return 0;
}
