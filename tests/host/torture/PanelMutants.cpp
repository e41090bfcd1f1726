// Wrong panels.
#include <stdexcept>
#include <utility>

#include "kit/panels/AKGUIDesc.h"
#include "tests/host/torture/HostMutants.h"

namespace host {
namespace {

using Tables = HostTables;

const AKPanelTable& kReal = gReal.panel;

}  // namespace

std::vector<HostMutant> PanelMutants() {
  return {
      {"panel.getProperty", "a panel without what its description says",
       [](Tables* t) {
         t->panel.construct = [](AKGUIDesc* wrapper, const char*, va_list list) {
           kReal.construct(wrapper, nullptr, list);
         };
       }},
      {"panel.construct", "leaves the wrapper empty",
       [](Tables* t) { t->panel.construct = [](AKGUIDesc*, const char*, va_list) {}; }},
      {"panel.destruct", "frees nothing", [](Tables* t) { t->panel.destruct = [](AKGUIDesc*) {}; }},
      {"panel.setProperty", "sets flags beside those that are given",
       [](Tables* t) {
         Put<[](void* p, unsigned int selector, unsigned int value) {
           kReal.setProperty.Call(p, selector, value | 0x200);
         }>(&t->panel.setProperty);
       }},
      {"panel.getProperty", "an ID of 16 bits",
       [](Tables* t) {
         Put<[](void* p, unsigned int selector) { return kReal.getProperty.Call(p, selector) & 0xFFFF; }>(
             &t->panel.getProperty);
       }},
      {"panel.getPanelSize", "width and height are mixed up",
       [](Tables* t) {
         Put<[](void* p, int width, int height) { kReal.setPanelSize.Call(p, height, width); }>(&t->panel.setPanelSize);
       }},
      {"panel.setPanelSize", "throws for absurd sizes",
       [](Tables* t) {
         Put<[](void* p, int width, int height) {
           if (width < 0) throw std::range_error("a width below 0");
           kReal.setPanelSize.Call(p, width, height);
         }>(&t->panel.setPanelSize);
       }},
      {"panel.getPanelSize", "writes to places that are null",
       [](Tables* t) {
         Put<[](void* p, int* width, int* height) {
           kReal.getPanelSize.Call(p, width, height);
           *static_cast<volatile int*>(width) = *width;
         }>(&t->panel.getPanelSize);
       }},
      {"panel.setPanelTitle", "cuts titles",
       [](Tables* t) {
         Put<[](void* p, const AKString& title) { kReal.setPanelTitle.Call(p, title.SubString(0, 255)); }>(
             &t->panel.setPanelTitle);
       }},
      {"panel.getPanelTitle", "empty",
       [](Tables* t) { Put<[](void*) { return AKString(); }>(&t->panel.getPanelTitle); }},
      {"panel.getControllerCount", "a second control of an ID is not added",
       [](Tables* t) {
         Put<[](void* p, AKGUICtrl* control) {
           if (kReal.getController.Call(p, control->CtrlID()) == nullptr) kReal.addController.Call(p, control);
         }>(&t->panel.addController);
       }},
      {"panel.addController", "throws for an ID that is taken",
       [](Tables* t) {
         Put<[](void* p, AKGUICtrl* control) {
           if (kReal.getController.Call(p, control->CtrlID()) != nullptr) throw std::invalid_argument("taken");
           kReal.addController.Call(p, control);
         }>(&t->panel.addController);
       }},
      {"panel.getController", "a control for every ID",
       [](Tables* t) {
         Put<[](void* p, unsigned int id) {
           AKGUICtrl* const found = kReal.getController.Call(p, id);
           return found != nullptr ? found : kReal.getController.Call(p, 5);
         }>(&t->panel.getController);
       }},
      {"panel.getControllerCount", "at most 255",
       [](Tables* t) {
         Put<[](void* p) { return kReal.getControllerCount.Call(p) & 0xFF; }>(&t->panel.getControllerCount);
       }},
      {"panel.openModalDialog", "writes the result when it fails",
       [](Tables* t) {
         Put<[](void* p, AKModalProc proc, AKObject* object, int* result) {
           if (result != nullptr) *result = 0;
           return kReal.openModalDialog.Call(p, proc, object, result);
         }>(&t->panel.openModalDialog);
       }},
      {"panel.openModalDialog", "status 0 without an object",
       [](Tables* t) {
         Put<[](void* p, AKModalProc proc, AKObject* object, int* result) {
           return object == nullptr ? 0 : kReal.openModalDialog.Call(p, proc, object, result);
         }>(&t->panel.openModalDialog);
       }},
      {"panel.openModalDialog", "another result than the dialog was closed with",
       [](Tables* t) {
         Put<[](void* p, int result) { kReal.closeDialog.Call(p, result + 1); }>(&t->panel.closeDialog);
       }},
      {"panel.closeDialog", "throws when none is open",
       [](Tables* t) { Put<[](void*, int) { throw std::logic_error("no dialog"); }>(&t->panel.closeDialog); }},
  };
}

}  // namespace host
