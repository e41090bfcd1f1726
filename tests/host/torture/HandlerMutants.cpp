// Wrong handlers.
#include "kit/objects/AKHandler.h"
#include "tests/host/torture/HostMutants.h"

namespace host {
namespace {

using Tables = HostTables;

const AKHandlerTable& kReal = gReal.handler;

AKObjectArray One(AKObject* object) { return AKObjectArray{object}; }

}  // namespace

std::vector<HostMutant> HandlerMutants() {
  return {
      {"handler.construct", "leaves the wrapper empty",
       [](Tables* t) { t->handler.construct = [](AKHandler*, NKTreeHandler*) {}; }},
      {"handler.destruct", "frees nothing", [](Tables* t) { t->handler.destruct = [](AKHandler*) {}; }},
      {"handler.isActive", "always", [](Tables* t) { Put<[](void*) { return true; }>(&t->handler.isActive); }},
      {"handler.actionName", "none is set",
       [](Tables* t) { Put<[](void*, const AKString&) {}>(&t->handler.setActionName); }},
      {"handler.actionName", "loses the last byte",
       [](Tables* t) { Put<[](void* h) { return WithoutLast(kReal.actionName.Call(h)); }>(&t->handler.actionName); }},
      {"handler.getMasterLayer", "null",
       [](Tables* t) { Put<[](void*) { return static_cast<AKObject*>(nullptr); }>(&t->handler.getMasterLayer); }},
      {"handler.addObjects", "adds what it can before it refuses",
       [](Tables* t) {
         Put<[](void* h, const AKObjectArray& objects, AKObject* parent, AKHandlerLinkMode mode) {
           int status = 0;
           for (AKObject* one : objects)
             status = status != 0 ? status : kReal.addObjects.Call(h, One(one), parent, mode);
           return status;
         }>(&t->handler.addObjects);
       }},
      {"handler.addObjects", "one status for all refusals",
       [](Tables* t) {
         Put<[](void* h, const AKObjectArray& objects, AKObject* parent, AKHandlerLinkMode mode) {
           return kReal.addObjects.Call(h, objects, parent, mode) == 0 ? 0 : -1;
         }>(&t->handler.addObjects);
       }},
      {"handler.addObjects", "no refusal in methods that only look",
       [](Tables* t) {
         Put<[](void* h, const AKObjectArray& objects, AKObject* parent, AKHandlerLinkMode mode) {
           const int status = kReal.addObjects.Call(h, objects, parent, mode);
           return status == -733 ? 0 : status;
         }>(&t->handler.addObjects);
       }},
      {"handler.deleteObjects", "deletes what it can before it refuses",
       [](Tables* t) {
         Put<[](void* h, const AKObjectArray& objects) {
           int status = 0;
           for (AKObject* one : objects) status = status != 0 ? status : kReal.deleteObjects.Call(h, One(one));
           return status;
         }>(&t->handler.deleteObjects);
       }},
      {"handler.deleteObjects", "leaves them all",
       [](Tables* t) {
         Put<[](void* h, const AKObjectArray& objects) { return kReal.reviseObjects.Call(h, objects); }>(
             &t->handler.deleteObjects);
       }},
      {"handler.reviseObjects", "status 0 for objects of no document",
       [](Tables* t) {
         Put<[](void* h, const AKObjectArray& objects) {
           const int status = kReal.reviseObjects.Call(h, objects);
           return status == -732 ? 0 : status;
         }>(&t->handler.reviseObjects);
       }},
      {"handler.reviseObjects", "no failure where a record can't be written",
       [](Tables* t) {
         Put<[](void* h, const AKObjectArray& objects) {
           const int status = kReal.reviseObjects.Call(h, objects);
           return status == -735 ? 0 : status;
         }>(&t->handler.reviseObjects);
       }},
  };
}

}  // namespace host
