#include "mapping/MappingSteps.h"

#include <numeric>
#include <utility>

namespace
{

qint64 sizeOf(const MappingChange::Content &content)
{
    return content ? content->size() : 0;
}

} // namespace

MappingChange MappingChange::reversed() const
{
    MappingChange change = *this;
    std::swap(change.before, change.after);
    std::swap(change.contentBefore, change.contentAfter);
    return change;
}

void MappingSteps::add(MappingChange change)
{
    m_undone.clear();
    m_done.push_back(std::move(change));
    const auto tooMuch = [this] {
        return std::accumulate(m_done.begin(), m_done.end(), qint64{0},
                               [](qint64 bytes, const MappingChange &each) {
                                   return bytes + sizeOf(each.contentBefore) + sizeOf(each.contentAfter);
                               }) > mostBytes;
    };
    while (m_done.size() > most || (m_done.size() > 1 && tooMuch())) {
        m_done.pop_front();
    }
}

bool MappingSteps::joinEdit(MappingChange *change)
{
    const MappingChange *before = last();
    if (change->edit == 0 || before == nullptr || before->edit != change->edit ||
        before->step.control != change->step.control || before->file == MappingChange::File::WorkingCopy) {
        return false;
    }
    change->before = before->before;
    dropLast();
    return true;
}

void MappingSteps::clear()
{
    m_done.clear();
    m_undone.clear();
}

void MappingSteps::move(Changes &from, Changes &to)
{
    to.push_back(std::move(from.back()));
    from.pop_back();
}
