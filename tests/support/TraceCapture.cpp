#include "TraceCapture.h"

#include "KORHUBTrace.h"

TraceCapture::TraceCapture() {
  KORHUBTrace::SetOutput(&_stream);
  KORHUBTrace::SetActive(1);
}

TraceCapture::~TraceCapture() {
  KORHUBTrace::SetActive(0);
  KORHUBTrace::SetOutput(nullptr);
}

std::vector<std::string> TraceCapture::Lines() const {
  std::vector<std::string> lines;
  std::istringstream input(_stream.str());
  for (std::string line; std::getline(input, line);) lines.push_back(line);
  return lines;
}

void TraceCapture::Clear() {
  _stream.str(std::string());
  _stream.clear();
}
