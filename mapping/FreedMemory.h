#pragma once

/// Gives memory that was freed back to the system.
namespace FreedMemory
{

/// At its end, what large structures that were made and freed before have left behind goes. Their nodes lie
/// among what stays, so that the heap would keep all of it otherwise: 300 MB after 2,000 mappings.
class GiveBack
{
public:
    GiveBack() = default;
    ~GiveBack();
    GiveBack(const GiveBack &) = delete;
    GiveBack &operator=(const GiveBack &) = delete;
};

} // namespace FreedMemory
