// validate.js <file>...: exits 1 if the public validator finds an error or a warning in a GLB file.
const fs = require('fs');
const validator = require('gltf-validator');

async function problemsOf(file) {
  const report = await validator.validateBytes(new Uint8Array(fs.readFileSync(file)), { maxIssues: 10 });
  const { numErrors, numWarnings, messages } = report.issues;
  for (const message of messages) console.error(`${file}: ${message.code} ${message.message} ${message.pointer}`);
  return numErrors + numWarnings;
}

(async () => {
  let problems = 0;
  for (const file of process.argv.slice(2)) problems += await problemsOf(file);
  console.log(`validate: ${process.argv.length - 2} files, ${problems} errors and warnings`);
  process.exitCode = problems > 0 ? 1 : 0;
})();
