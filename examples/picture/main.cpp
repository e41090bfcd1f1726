// The bundle's one entry point: it registers two classes.
#include "CStdFrame.h"
#include "CStdPicture.h"

static AKClass* gPictureClass = nullptr;
static AKClass* gFrameClass = nullptr;

extern "C" __attribute__((visibility("default"))) int pluginMain(void* hostServiceRecord) {
  const int status = CStdPicture::Register(hostServiceRecord, &gPictureClass);
  return status == 0 ? CStdFrame::Register(hostServiceRecord, &gFrameClass) : status;
}
