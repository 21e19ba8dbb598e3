console.log('todo')
