int wmain() {
  return 0;
}
