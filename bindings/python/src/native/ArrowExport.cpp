#include "ArrowExport.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace bouncecheck::python {
namespace {

/// Structures of the interface that belong to another one.
template <class Structure>
class Children {
public:
    Children() = default;
    Children(const Children&) = delete;
    Children& operator=(const Children&) = delete;
    ~Children() {
        for (Structure& child : children_) {
            if (child.release) child.release(&child);
        }
    }

    void reserve(std::size_t count) {
        children_.reserve(count);
        pointers_.reserve(count);
    }
    void add(Structure child) {
        children_.push_back(child);
        pointers_.push_back(&children_.back());
    }
    Structure** pointers() noexcept { return pointers_.data(); }
    std::int64_t size() const noexcept { return static_cast<std::int64_t>(pointers_.size()); }

private:
    std::vector<Structure> children_;
    std::vector<Structure*> pointers_;
};

struct OwnedSchema {
    std::string name;
    Children<ArrowSchema> children;
};

struct OwnedArray {
    explicit OwnedArray(ArrowColumn&& moved) : column(std::move(moved)) {}

    ArrowColumn column;
    std::vector<const void*> buffers;
    Children<ArrowArray> children;
};

template <class Owned, class Structure>
void release(Structure* structure) {
    const std::unique_ptr<Owned> owned(static_cast<Owned*>(structure->private_data));
    structure->release = nullptr;
}

const char* formatOf(ArrowColumn::Kind kind) noexcept {
    switch (kind) {
        case ArrowColumn::Kind::text: return "u";
        case ArrowColumn::Kind::bytes: return "z";
        case ArrowColumn::Kind::int32: return "i";
        case ArrowColumn::Kind::int64: return "l";
        case ArrowColumn::Kind::boolean: return "b";
        case ArrowColumn::Kind::time: return "tsu:UTC";
        case ArrowColumn::Kind::list: return "+l";
        case ArrowColumn::Kind::record: break;
    }
    return "+s";
}

}  // namespace

ArrowSchema exportedSchema(const ArrowColumn& column) {
    auto owned = std::make_unique<OwnedSchema>();
    owned->name = column.name();
    owned->children.reserve(column.children().size());
    for (const ArrowColumn& child : column.children()) owned->children.add(exportedSchema(child));
    ArrowSchema schema = {};
    schema.format = formatOf(column.kind());
    schema.name = owned->name.c_str();
    schema.flags = column.isNullable() ? ARROW_FLAG_NULLABLE : 0;
    schema.n_children = owned->children.size();
    schema.children = owned->children.pointers();
    schema.release = release<OwnedSchema, ArrowSchema>;
    schema.private_data = owned.release();
    return schema;
}

ArrowArray exportedArray(ArrowColumn&& column) {
    auto owned = std::make_unique<OwnedArray>(std::move(column));
    owned->children.reserve(owned->column.children().size());
    for (ArrowColumn& child : owned->column.children()) {
        owned->children.add(exportedArray(std::move(child)));
    }
    owned->buffers = owned->column.buffers();
    ArrowArray array = {};
    array.length = owned->column.size();
    array.null_count = owned->column.nulls();
    array.n_buffers = static_cast<std::int64_t>(owned->buffers.size());
    array.buffers = owned->buffers.data();
    array.n_children = owned->children.size();
    array.children = owned->children.pointers();
    array.release = release<OwnedArray, ArrowArray>;
    array.private_data = owned.release();
    return array;
}

}  // namespace bouncecheck::python
