// The commands of `velmoractl store`, each with what its part of the command line gave.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace velmora::cli {

struct InitOptions {
  std::string Directory;
  std::string Server;
  std::string Mail;      // mail address of the administrator
  std::string Sendmail;  // host path of the program that takes outgoing mail
};
int RunStoreInit(const InitOptions& options);

struct AddUserOptions {
  std::string Store;  // of each command: the directory of the option --store
  std::string Name, Login, Mail;
  bool Administrator = false;
  bool WithoutRights = false;
  std::string VCard;  // host path of a file, "" for none
};
int RunStoreAddUser(const AddUserOptions& options);

struct DeliverCommandOptions {
  std::string Store;
  std::string Archive;
  std::vector<std::string> Sources;  // host paths
};
int RunStoreDeliver(const DeliverCommandOptions& options);

struct PutKind;

struct PutOptions {
  const PutKind* Kind = nullptr;
  std::string Store;
  std::string Archive;
  std::vector<std::string> Files;             // host paths
  std::map<std::string, std::string> Values;  // by option; an empty one is not given
  std::map<std::string, bool> Switches;       // by option
};
int RunStorePut(const PutOptions& options);

struct ListOptions {
  std::string Store;
  std::string Archive;  // "": the tree of archives
  bool Json = false;
};
int RunStoreList(const ListOptions& options);

struct CheckOptions {
  std::string Store;
};
int RunStoreCheck(const CheckOptions& options);

struct SiteOptions {
  std::string Store;
  std::vector<std::string> Changes;  // "name=value"
};
int RunStoreSite(const SiteOptions& options);

}  // namespace velmora::cli
