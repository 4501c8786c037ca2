#pragma once

namespace embedded {

class Connection;

// Makes an empty file a process database of the present version.
void CreateSchema(Connection& iConnection);

// InputError unless the file is a whole process database of the present version: marks, tables,
// pages, references and texts are all checked.
void CheckDatabase(Connection& iConnection);

}  // namespace embedded
