// Opens, but exports hardly anything of what is asked afterwards.
extern "C" __declspec(dllexport) int zelOpenSIM(int, int) {
  return 1;
}
extern "C" __declspec(dllexport) int zelInitSMS() {
  return 1;
}
extern "C" __declspec(dllexport) int zelGetReceiverSMS(void*) {
  return -1;
}
