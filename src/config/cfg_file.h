// The config tree file: a small persistent tree of named objects.
//
// An object has a name, a type word, a value of any bytes and an ordered list of child objects. A
// file is read into memory whole, changed there and written back whole; nothing is cached between
// two openings and nothing is locked: the last whole-file write wins.
//
// The format is text and bytes mixed, without header or byte order mark. Numbers are decimal ASCII:
//
//   <object:NAME,type:TYPE,len:LEN,childobjs:COUNT>   then LEN value bytes, raw, if there are any,
//                                                     or a line feed if there are none
//   ... the children, if COUNT is 1 or more ...
//   <endobj>                                          and a line feed
//
// An object is either a container or a leaf: a container's value is never written, so a container
// must be built without one. Value bytes are taken by count and never looked at.
//
// The reader trusts nothing. It never leaves its buffers, never recurses, takes no more memory than
// the file has bytes to fill, and releases everything when it refuses a file.
#pragma once

#include "platform/print_types.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace ostrel {

inline constexpr std::size_t kCfgNameBytes = 128;      // UTF-8 with terminator
inline constexpr std::size_t kCfgListNameUnits = 128;  // the most that a listed name may have
inline constexpr std::size_t kCfgTagBytes = 256;       // a whole tag with terminator
inline constexpr std::int32_t kCfgReplacedValueBytes = 8408;  // a favourite, all that is replaced

// The value of the "version" that the tree of a new file holds.
inline constexpr std::array<char, 8> kCfgVersion = {'0', '.', '0', '.', '0', '.', '1', '\0'};

struct CfgNode {
  char name[kCfgNameBytes];  // UTF-8, NUL-terminated
  char type[kCfgNameBytes];  // UTF-8, NUL-terminated; carried, never interpreted
  std::int32_t childCount;   // as the tag tells it: 1 and above makes a container
  std::int32_t len;          // value bytes, as the tag tells it; 0 and below means none

  // The value's bytes. A file that ends inside a value holds fewer than it announces: `storedBytes`
  // are here, with 32 zero bytes behind them, and zeros stand for the rest.
  std::byte* value;  // owned; null when there are none
  std::uint32_t storedBytes;

  CfgNode* parent;       // not owned; null at the root
  CfgNode* firstChild;   // owned, and through it the others, in file order
  CfgNode* lastChild;    // not owned
  CfgNode* nextSibling;  // owned by the parent
};

struct CfgHandle {
  char16_t path[kMaxPathUnits];  // the path that the file was opened with
  CfgNode* root;                 // owned; null when the file holds no object
};

// Reads the file, creating it first with the tree of a new file (root "cfgobj", in it "version") if
// it is missing. Result: a handle to be closed, with a null root for a file of no bytes; null when
// the file can't be created, opened or read as a tree, when the path is null or has 260 units and
// more, or when there is no memory.
CfgHandle* CfgOpen(const char16_t* path);

// Writes the tree over the file. Result: false for a null handle, a null root, or when there is no
// memory for the file's image. A file that can't be opened or written counts as written, after a
// debug line: no caller could do better than go on.
bool CfgSave(const CfgHandle* handle);

// Frees the tree and the handle. Null is allowed.
void CfgClose(CfgHandle* handle);

// Writes the tree of a new file to the path. Result: false when the file can't be made.
bool CfgCreate(const char16_t* path);

// The first direct child of that name. Null for a null node, and for a node that announces no
// children, whatever it holds. Names are compared as bytes, case-sensitively.
CfgNode* CfgFindChild(const CfgNode* node, const char16_t* name);

// Appends a child with copies of the type and the value; the parent gives up a value of its own.
// Result: the child; null for a null parent, a name that needs more than 127 bytes, a tag that
// would not fit, or when there is no memory.
CfgNode* CfgAddChild(CfgNode* parent, const char16_t* name, const char* type, const void* value,
                     std::int32_t len);

// Removes the first direct child of that name with its whole subtree. Result: whether there was
// one.
bool CfgDeleteChild(CfgNode* parent, const char16_t* name);
bool CfgDeleteChild(CfgNode* parent, const char* name);

// Removes the last direct child with its whole subtree. Result: whether there was one.
bool CfgDeleteLastChild(CfgNode* parent);

// Writes the names of the first children, in file order, into rows of `rowUnits` units that lie one
// behind the other, cut to fit and terminated. Result: how many were written; they are those that
// are there, whatever the node announces.
std::size_t CfgListChildren(const CfgNode* node, std::span<char16_t> rows, std::size_t rowUnits);

// Finds the object of the old name anywhere in the subtree, depth first and the subtree's root
// included, and makes it a leaf of the new name and of type "binary" with 8408 bytes from `value`
// (zeros for null). It keeps its place. Result: the object; null when there is none of that name,
// when a name needs more than 127 bytes, or when there is no memory.
CfgNode* CfgReplaceNode(CfgNode* subtree, const char16_t* newName, const char16_t* oldName,
                        const void* value);

// Replaces a node's value by these bytes and makes it a leaf. Result: false, with the old value,
// without memory.
bool CfgSetValue(CfgNode& node, std::span<const std::byte> value);

// Copies the first bytes of a value, zeros where the file ended early. Bytes behind `len` are zero.
void CfgCopyValue(const CfgNode& node, std::span<std::byte> out);

// Owns an opened file for the length of a scope.
struct CfgCloser {
  void operator()(CfgHandle* handle) const { CfgClose(handle); }
};
using ScopedCfg = std::unique_ptr<CfgHandle, CfgCloser>;

}  // namespace ostrel
