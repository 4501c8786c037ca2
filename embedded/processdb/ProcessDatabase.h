#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/component/Handle.h"
#include "host/values/ZefListPtrIUnknown.h"
#include "host/values/ZefListPtrZefListValZefUnicodeString.h"
#include "host/values/ZefListValZefUnicodeString.h"
#include "host/values/ZefUnicodeString.h"

namespace embedded {

class Connection;
class DatabaseProcess;

// The external process database: a file of processes with their parents and versions, of the
// activities that belong to them and of what it knows of welds. Activities and welds are named by
// the key that their document gives them. docs/process-database.md describes the file.
class ProcessDatabase {
 public:
  // A new database; InputError when anything stands at that path.
  static std::unique_ptr<ProcessDatabase> Create(const std::filesystem::path& iFile);
  // InputError for what is not a whole process database of this version.
  static std::unique_ptr<ProcessDatabase> Open(const std::filesystem::path& iFile);
  ~ProcessDatabase();
  ProcessDatabase(const ProcessDatabase&) = delete;
  ProcessDatabase& operator=(const ProcessDatabase&) = delete;

  const std::filesystem::path& File() const { return file_; }

  // What a document answers its database interfaces from: E_FAIL for what is unknown, for an object
  // of another database and when the file cannot be read; what is asked for is then left as it was,
  // and nothing is thrown. Objects come with a reference for the caller; a process has one object
  // for as long as anyone holds it.
  HRESULT GetActivityObject(const std::string& iActivity, IUnknown*& oObject);
  HRESULT GetObjectFromID(const ZefUnicodeString& iIdentifier, IUnknown*& oObject);
  HRESULT GetObjectID(IUnknown* iObject, ZefUnicodeString& oIdentifier);
  // The object itself when it is a base process.
  HRESULT GetBaseProcess(IUnknown* iObject, IUnknown*& oBase);
  // A new text that the caller deletes.
  HRESULT GetIDString(IUnknown* iObject, ZefUnicodeString*& oIdentifier);
  // New lists that the caller deletes, with one reference per element for the caller; empty ones
  // for a process without any.
  HRESULT ListParents(IUnknown* iObject, ZefListPtrIUnknown*& oParents, int iMode);
  HRESULT ListRelatedVersions(IUnknown* iObject, ZefListPtrIUnknown*& oVersions);

  // S_OK when there is an assignment.
  HRESULT IsAssigned(const std::string& iWeld);
  // Appends identifiers in the order of assignment; none for a weld that is not known.
  HRESULT ListAssignments(const std::string& iWeld, ZefListValZefUnicodeString& ioIdentifiers);
  // Appends per process version of the weld a new list, which the caller deletes, of its
  // identifiers from the root down; a list may be empty.
  HRESULT ListVersionLists(const std::string& iWeld, ZefListPtrZefListValZefUnicodeString& ioLists);

  // Empty for an unknown process; InputError when the file cannot be read.
  std::string Label(const std::string& iProcess);

  // Groups changes: undone at its end unless committed. Transactions nest.
  class Transaction {
   public:
    explicit Transaction(ProcessDatabase& iDatabase);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    void Commit();

   private:
    Connection& connection_;
    bool isOpen_ = true;
  };

  // Each operation changes all or nothing. InputError for a name that is empty or not UTF-8 text,
  // for a process that is not there and for an entry that is there already.
  void AddProcess(const std::string& iIdentifier, const std::string& iLabel, bool iIsBase);
  // After the parents that the process has. Circles among parents are stored as they are given.
  void AddParent(const std::string& iProcess, const std::string& iParent);
  // After the related versions that the process has; `iVersion` does not get `iProcess` in turn.
  void RelateVersions(const std::string& iProcess, const std::string& iVersion);
  void LinkActivity(const std::string& iActivity, const std::string& iProcess);
  void Assign(const std::string& iWeld, const std::string& iProcess);
  // Identifiers from the root down, none of them twice.
  void AddVersionList(const std::string& iWeld, const std::vector<std::string>& iIdentifiers);

 private:
  friend class DatabaseProcess;

  ProcessDatabase(const std::filesystem::path& file, std::unique_ptr<Connection> connection);
  Handle<DatabaseProcess> ObjectOf(const std::string& identifier);
  const DatabaseProcess* Own(IUnknown* object) const;
  HRESULT HandOver(const std::vector<std::string>& identifiers, IUnknown*& object);
  HRESULT ListObjects(std::string_view sql, IUnknown* object, ZefListPtrIUnknown*& objects);
  void Forget(const DatabaseProcess& process);

  void RequireProcess(const std::string& identifier);
  void AddPair(std::string_view sql, const std::string& subject, const std::string& process,
               const std::string& relation);

  std::filesystem::path file_;
  std::unique_ptr<Connection> connection_;
  std::unordered_map<std::string, DatabaseProcess*> objects_;
};

}  // namespace embedded
