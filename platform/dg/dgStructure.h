// Scenes: elements in the order in which they act.
#pragma once

#include "dgBase.h"
#include "dgElements.h"
#include "giBox.h"
#include "utExport.h"

#include <memory>
#include <vector>

/// A sequence of elements, which it owns.
class UT_API dgStructure : public dgBase
{
public:
    /// Appends an element, made with `new`, and takes it over. Null is left out.
    virtual void append(dgElement* element) = 0;

    /// The box around the nodes of every triangle block; a node with a coordinate that is no finite number is
    /// left out.
    /// @param exact  1 to look at the nodes as they are now
    virtual giBox3 bounding_box(int exact) const = 0;

    virtual std::size_t size() const = 0;
    /// @param index  0 to size() - 1
    virtual dgElement const& element(std::size_t index) const = 0;

protected:
    ~dgStructure() override;
};

/// A structure in the client's own memory.
class UT_API dgClientStructure final : public dgStructure
{
public:
    void append(dgElement* element) override;
    giBox3 bounding_box(int exact) const override;
    std::size_t size() const override { return m_elements.size(); }
    dgElement const& element(std::size_t index) const override { return *m_elements[index]; }

private:
    ~dgClientStructure() override;

    std::vector<std::unique_ptr<dgElement>> m_elements;
};

/// Where an application keeps shared structures; a view that draws a structure of its own needs none.
class UT_API dgStructureStore : public dgBase
{
protected:
    ~dgStructureStore() override;
};
